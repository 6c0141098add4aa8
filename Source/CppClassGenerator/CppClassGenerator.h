#ifndef CPPCLASSGENERATOR_H
#define CPPCLASSGENERATOR_H

#include "ClassGeneratorBase.h"
#include "CppClassWriter.h"
#include "ui_CppOptionsWidget.h"

class FileChooserWidget;

/// Generates C++ classes from a header and a source template, with a page for the options.
///
/// The widgets of the page are the only place where the options are kept; a run reads them as it goes.
class CppClassGenerator : public ClassGeneratorBase, public CppClassWriter
{
    Q_OBJECT

public:
    CppClassGenerator();

    const char* LanguageName() const override { return "C++"; }
    void SetupUi(QWidget* parent) override;
    QWidget* Widget() const override { return m_ui.widget; }
    void ReadSettings() override;
    void WriteSettings() const override;
    bool OptionsValid() const override { return Options().IsValid(); }
    QString MissingOption() const override { return Options().Missing(); }

    /// Names class and files after the camera.
    void SetCameraName(const char* name) override;

    /// Writes the header, then the source, whatever became of the header.
    void Run(const char* destinationFolder, bool overwrite, const FeatureInfos& features) override;

    /// Makes the file at \a outputPath from the template at \a templatePath. Does not look at what becomes of its
    /// writing.
    /// \param kind "header" or "source", for the messages
    void ProcessFile(const char* kind, const QString& outputPath, bool overwrite, const QString& templatePath,
        const FeatureInfos& features);

    /// What the page shows at this moment.
    CppOptions Options() const override;

    void Report(const QString& message) override;

private slots:
    void OnOptionsTextChanged(const QString& text);
    void OnClassNameEditingFinished();

private:
    Ui_CppOptionsWidget m_ui;
    FileChooserWidget* m_headerTemplateFileChooser = nullptr;
    FileChooserWidget* m_sourceTemplateFileChooser = nullptr;
};

#endif

#ifndef CPPCLASSGENERATOR_H
#define CPPCLASSGENERATOR_H

#include "ClassGeneratorBase.h"
#include "CppFeature.h"
#include "ui_CppOptionsWidget.h"

#include <KoltaCPP/Feature.h>

#include <map>

class FileChooserWidget;
class QTextStream;

/// Generates C++ classes from a header and a source template.
///
/// The widgets of the options page are the only place where the options are kept; a run reads them as it goes.
class CppClassGenerator : public ClassGeneratorBase
{
    Q_OBJECT

public:
    /// How a simple data type is spelled in the arguments of a getter and of a setter. Static texts.
    struct FeatureTypeInfo
    {
        const char* getterType;
        const char* setterType;
    };

    /// The data types whose value the SDK reads and writes in one call. Filled by the first generator.
    static std::map<KltFeatureDataType, FeatureTypeInfo> SimpleFeatureTypeMap;

    CppClassGenerator();

    const char* LanguageName() const override;
    void SetupUi(QWidget* parent) override;
    QWidget* Widget() const override;
    void ReadSettings() override;
    void WriteSettings() const override;
    bool OptionsValid() const override;
    QString MissingOption() const override;

    /// Names class and files after the camera.
    void SetCameraName(const char* name) override;

    /// Writes the header, then the source, whatever became of the header.
    void Run(const char* destinationFolder, bool overwrite, const FeatureInfos& features) override;

    /// Whether the last run made both files to their last byte. The run itself does not look at what becomes of its
    /// writing: who needs to know asks.
    bool AllWritten() const;

    /// \name Names
    /// @{

    /// \a name with everything that cannot be part of a C++ identifier replaced. Says so in a message if it is
    /// different from \a name. Letters and digits of every script are kept.
    QString GetValidIdentifierName(const QString& name);

    /// All names of the feature that the SDK calls \a name, under the present options.
    CppFeatureNames FeatureNames(const QString& name);

    /// All that the generator looks at in a feature, with its names.
    CppFeature Describe(const OPX::KltAPI::Feature& feature);

    /// The handle of the feature with this identifier.
    QString MemberName(const QString& identifier);

    /// The type of the enumeration feature with this identifier or SDK name.
    QString EnumTypeName(const QString& name);

    /// The enumerator for one entry of an enumeration feature, both by their SDK names.
    QString EnumEntryName(const QString& feature, const QString& entry);
    /// @}

    /// \name Steps of a run
    /// @{

    /// Makes the file at \a outputPath from the template at \a templatePath.
    /// \param kind "header" or "source", for the messages
    void ProcessFile(const char* kind, const QString& outputPath, bool overwrite, const QString& templatePath,
        const FeatureInfos& features);

    /// Writes what one line of a template stands for.
    void Process(QTextStream& output, QString line, const FeatureInfos& features);

    /// The writers of the blocks that stand for a placeholder. All lines are indented by \a column blanks.
    /// \return the number of features or, for the enumerations, entries that were written
    int WriteMethodDeclarations(QTextStream& output, int column, const FeatureInfos& features);
    int WriteMethodImplementations(QTextStream& output, int column, const FeatureInfos& features);
    int WriteVariableDeclarations(QTextStream& output, int column, const FeatureInfos& features);
    int WriteEnumDeclarations(QTextStream& output, int column, const FeatureInfos& features);
    /// @}

private slots:
    void OnOptionsTextChanged(const QString& text);
    void OnClassNameEditingFinished();

private:
    /// Writes the methods of one feature. The stream is the scratch stream of the feature's category.
    typedef void (CppClassGenerator::*FeatureWriter)(
        QTextStream& scratch, const QString& indent, const CppFeature& feature, const QList<CppMethod>& valueMethods);

    QString SubstituteNames(QString line) const;
    bool ProcessBlock(QTextStream& output, const QString& line, const FeatureInfos& features);

    int WriteMethods(QTextStream& output, int column, const FeatureInfos& features, FeatureWriter writeFeature);
    bool WriteMethodsOf(
        const OPX::KltAPI::Feature& feature, QTextStream& scratch, const QString& indent, FeatureWriter writeFeature);
    void WriteDeclarations(
        QTextStream& scratch, const QString& indent, const CppFeature& feature, const QList<CppMethod>& valueMethods);
    void WriteImplementations(
        QTextStream& scratch, const QString& indent, const CppFeature& feature, const QList<CppMethod>& valueMethods);
    void WriteMethodHead(QTextStream& scratch, const QString& indent, const QString& name, const QString& arguments);
    void WriteValueMethod(
        QTextStream& scratch, const QString& indent, const CppMethod& method, const CppFeatureNames& names);
    void WriteAccessor(QTextStream& scratch, const QString& indent, const CppFeatureNames& names);
    int WriteEntries(QTextStream& scratch, const QString& indent, const QString& feature,
        const std::vector<OPX::KltAPI::EnumEntry>& entries);

    Ui_CppOptionsWidget m_ui;
    FileChooserWidget* m_headerTemplateFileChooser = nullptr;
    FileChooserWidget* m_sourceTemplateFileChooser = nullptr;
    bool m_allWritten = false;
};

#endif

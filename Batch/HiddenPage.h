#ifndef HIDDENPAGE_H
#define HIDDENPAGE_H

#include "CppClassGenerator.h"
#include "FeatureInfos.h"

#include <QString>
#include <QWidget>

#include <string>

class QLineEdit;
struct GenerateOptions;

/// The C++ generator with its options page, which is never shown. Prints the generator's messages.
class HiddenPage
{
public:
    HiddenPage();

    /// Fills the page as the window does when a camera is selected, then with the options. The user's stored settings
    /// play no part: the same command gives the same files everywhere.
    void Fill(const GenerateOptions& options, const std::string& cameraName);

    CppClassGenerator& Generator() { return m_generator; }

    QString ClassName() const;
    QString HeaderName() const;
    QString SourceName() const;
    QString HeaderTemplate() const;
    QString SourceTemplate() const;

    /// Messages about files in \a folder tell of \a shown instead, where the files end up.
    void ShowInstead(const QString& folder, const QString& shown);

    /// No more messages.
    void BeQuiet() { m_quiet = true; }

    /// Whether both files in \a folder are there to their last byte. The generator does not look at what becomes of
    /// its writing, so a full disk is only found by generating once more, into memory.
    bool IsComplete(const QString& folder, const FeatureInfos& features);

private:
    QLineEdit* Edit(const char* name) const;
    QLineEdit* Chooser(const char* name) const;
    QByteArray Render(const QString& templatePath, const FeatureInfos& features);
    void Print(QString message) const;

    QWidget m_page;
    CppClassGenerator m_generator;
    QString m_folder;
    QString m_shown;
    bool m_quiet = false;
};

#endif

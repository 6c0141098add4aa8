#ifndef HIDDENPAGE_H
#define HIDDENPAGE_H

#include "CppClassGenerator.h"

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

private:
    QLineEdit* Edit(const char* name) const;
    QLineEdit* Chooser(const char* name) const;
    void Print(QString message) const;

    QWidget m_page;
    CppClassGenerator m_generator;
    QString m_folder;
    QString m_shown;
    bool m_quiet = false;
};

#endif

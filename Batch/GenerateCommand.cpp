#include "GenerateCommand.h"

#include "CppClassGenerator.h"
#include "ExitCodes.h"
#include "FileChooserWidget.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLineEdit>
#include <QTemporaryDir>
#include <QWidget>

#include <cstdio>
#include <memory>

namespace
{

QString FromArgument(const std::string& text)
{
    return QString::fromUtf8(text.c_str());
}

std::string ToMessage(const QString& text)
{
    return text.toUtf8().toStdString();
}

/// The generator with its options page, which is never shown.
class HiddenPage
{
public:
    HiddenPage()
    {
        m_generator.SetupUi(&m_page);
        QObject::connect(
            &m_generator, &ClassGeneratorBase::LogMessage, [this](const QString& message) { Print(message); });
    }

    /// Messages about files in \a folder tell of \a shown instead, where the files end up.
    void ShowInstead(const QString& folder, const QString& shown)
    {
        m_folder = folder;
        m_shown = shown;
    }

    CppClassGenerator& Generator() { return m_generator; }

    QLineEdit* Edit(const char* name) { return m_page.findChild<QLineEdit*>(QLatin1String(name)); }

    QLineEdit* Chooser(const char* name)
    {
        return m_page.findChild<FileChooserWidget*>(QLatin1String(name))->m_lineEdit;
    }

private:
    void Print(QString message) const
    {
        if (!m_folder.isEmpty())
            message.replace(m_folder, m_shown);
        std::fprintf(stderr, "%s\n", message.toUtf8().constData());
    }

    QWidget m_page;
    CppClassGenerator m_generator;
    QString m_folder;
    QString m_shown;
};

void Fill(HiddenPage& page, const GenerateOptions& options, const std::string& cameraName)
{
    page.Edit("m_editGetterPrefix")->setText(QLatin1String("Get"));
    page.Edit("m_editSetterPrefix")->setText(QLatin1String("Set"));
    const QString templates = QCoreApplication::applicationDirPath() + QLatin1String("/Templates/CppTemplate");
    page.Chooser("m_headerTemplateFileChooser")
        ->setText(
            options.headerTemplate.empty() ? templates + QLatin1String(".h") : FromArgument(options.headerTemplate));
    page.Chooser("m_sourceTemplateFileChooser")
        ->setText(
            options.sourceTemplate.empty() ? templates + QLatin1String(".cpp") : FromArgument(options.sourceTemplate));
    page.Generator().SetCameraName(cameraName.c_str());
    const auto className = options.texts.find("m_editClassName");
    if (className != options.texts.end())
    {
        page.Edit("m_editClassName")->setText(FromArgument(className->second));
        QMetaObject::invokeMethod(&page.Generator(), "OnClassNameEditingFinished");
    }
    for (const auto& text : options.texts)
        if (text.first != "m_editClassName")
            page.Edit(text.first.c_str())->setText(FromArgument(text.second));
}

/// Replaces the file at \a target by the one at \a source in one step, unless they are the same.
void Replace(const QString& source, const QString& target)
{
    QFile fresh(source);
    if (!fresh.open(QIODevice::ReadOnly))
        throw CommandError(ExitFile, "'" + ToMessage(target) + "' was not generated. See the messages above.");
    QFile old(target);
    if (old.open(QIODevice::ReadOnly) && old.readAll() == fresh.readAll())
        return;
    if (std::rename(QFile::encodeName(source).constData(), QFile::encodeName(target).constData()) != 0)
        throw CommandError(ExitFile, "'" + ToMessage(target) + "' cannot be written. Check the folder.");
}

} // namespace

void Generate(const GenerateOptions& options)
{
    FeatureInfos features;
    std::string cameraName;
    {
        const SdkSession session(options.camera);
        const OPX::KltAPI::CameraPtr camera = session.Find(options.camera);
        cameraName = NameOf(*camera);
        ReadCatalogue(camera, features);
    }
    HiddenPage page;
    Fill(page, options, cameraName);
    if (!page.Generator().OptionsValid())
        throw CommandError(ExitFile, "The names are empty or the templates do not exist. Check the options.");

    const QString folder = FromArgument(options.outputFolder);
    if (!QDir().mkpath(folder))
        throw CommandError(ExitFile, "The folder '" + options.outputFolder + "' cannot be made.");
    // On the same file system, so that the files can be moved into their place.
    const QTemporaryDir fresh(folder + QLatin1String("/.kolta-classgen-XXXXXX"));
    if (!fresh.isValid())
        throw CommandError(ExitFile, "Nothing can be written into '" + options.outputFolder + "'.");
    page.ShowInstead(fresh.path(), QDir::cleanPath(folder));
    page.Generator().Run(fresh.path().toUtf8().constData(), true, features);
    for (const char* name : {"m_editHeaderFileName", "m_editSourceFileName"})
        Replace(fresh.path() + QLatin1Char('/') + page.Edit(name)->text(),
            folder + QLatin1Char('/') + page.Edit(name)->text());
}

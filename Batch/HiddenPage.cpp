#include "HiddenPage.h"

#include "FileChooserWidget.h"
#include "GenerateCommand.h"

#include <QCoreApplication>
#include <QLineEdit>

#include <cstdio>

namespace
{

QString Template(const std::string& chosen, const char* ending)
{
    if (!chosen.empty())
        return QString::fromStdString(chosen);
    return QCoreApplication::applicationDirPath() + QLatin1String("/Templates/CppTemplate") + QLatin1String(ending);
}

} // namespace

HiddenPage::HiddenPage()
{
    m_generator.SetupUi(&m_page);
    QObject::connect(&m_generator, &ClassGeneratorBase::LogMessage, [this](const QString& message) { Print(message); });
}

void HiddenPage::Fill(const GenerateOptions& options, const std::string& cameraName)
{
    Edit("m_editGetterPrefix")->setText(QLatin1String("Get"));
    Edit("m_editSetterPrefix")->setText(QLatin1String("Set"));
    Chooser("m_headerTemplateFileChooser")->setText(Template(options.headerTemplate, ".h"));
    Chooser("m_sourceTemplateFileChooser")->setText(Template(options.sourceTemplate, ".cpp"));
    const auto className = options.texts.find("m_editClassName");
    if (className == options.texts.end())
    {
        m_generator.SetCameraName(cameraName.c_str());
    }
    else
    {
        Edit("m_editClassName")->setText(QString::fromStdString(className->second));
        QMetaObject::invokeMethod(&m_generator, "OnClassNameEditingFinished");
    }
    for (const auto& text : options.texts)
        if (text.first != "m_editClassName")
            Edit(text.first.c_str())->setText(QString::fromStdString(text.second));
}

QString HiddenPage::ClassName() const
{
    return Edit("m_editClassName")->text();
}

QString HiddenPage::HeaderName() const
{
    return Edit("m_editHeaderFileName")->text();
}

QString HiddenPage::SourceName() const
{
    return Edit("m_editSourceFileName")->text();
}

QString HiddenPage::HeaderTemplate() const
{
    return Chooser("m_headerTemplateFileChooser")->text();
}

QString HiddenPage::SourceTemplate() const
{
    return Chooser("m_sourceTemplateFileChooser")->text();
}

void HiddenPage::ShowInstead(const QString& folder, const QString& shown)
{
    m_folder = folder;
    m_shown = shown;
}

QLineEdit* HiddenPage::Edit(const char* name) const
{
    return m_page.findChild<QLineEdit*>(QLatin1String(name));
}

QLineEdit* HiddenPage::Chooser(const char* name) const
{
    return m_page.findChild<FileChooserWidget*>(QLatin1String(name))->m_lineEdit;
}

void HiddenPage::Print(QString message) const
{
    if (m_quiet)
        return;
    if (!m_folder.isEmpty())
        message.replace(m_folder, m_shown);
    std::fprintf(stderr, "%s\n", message.toUtf8().constData());
}

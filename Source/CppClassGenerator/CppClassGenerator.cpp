#include "CppClassGenerator.h"

#include "FileChooserWidget.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QTextStream>
#include <QtDebug>

namespace
{

const char SettingsGroup[] = "CppClassGenerator";

/// An option that is kept from one session to the next.
struct Setting
{
    const char* key;
    QLineEdit* edit;
    QString defaultText;
};

QList<Setting> Settings(const Ui_CppOptionsWidget& ui)
{
    const CppOptions defaults = CppOptions::Defaults();
    QList<Setting> settings;
    settings.append({"GetterPrefix", ui.m_editGetterPrefix, defaults.getterPrefix});
    settings.append({"GetterSuffix", ui.m_editGetterSuffix, defaults.getterSuffix});
    settings.append({"SetterPrefix", ui.m_editSetterPrefix, defaults.setterPrefix});
    settings.append({"SetterSuffix", ui.m_editSetterSuffix, defaults.setterSuffix});
    settings.append({"HeaderTemplateFilePath", ui.m_headerTemplateFileChooser->m_lineEdit, defaults.headerTemplate});
    settings.append({"SourceTemplateFilePath", ui.m_sourceTemplateFileChooser->m_lineEdit, defaults.sourceTemplate});
    return settings;
}

} // namespace

CppClassGenerator::CppClassGenerator() : m_ui()
{
}

void CppClassGenerator::SetupUi(QWidget* parent)
{
    m_ui.setupUi(parent);
    m_headerTemplateFileChooser = m_ui.m_headerTemplateFileChooser;
    m_headerTemplateFileChooser->m_caption = tr("Select Template File");
    m_headerTemplateFileChooser->m_filter = tr("C++ header files (*.h;*.hpp);;All files (*.*)");
    m_sourceTemplateFileChooser = m_ui.m_sourceTemplateFileChooser;
    m_sourceTemplateFileChooser->m_caption = tr("Select Template File");
    m_sourceTemplateFileChooser->m_filter = tr("C++ source files (*.cpp);;All files (*.*)");
    // The stored paths may lead to a program that has been removed since.
    const CppOptions defaults = CppOptions::Defaults();
    m_headerTemplateFileChooser->SetDefault(defaults.headerTemplate, tr("Default Template"));
    m_sourceTemplateFileChooser->SetDefault(defaults.sourceTemplate, tr("Default Template"));
    m_ui.m_lblHeaderTemplateFile->setBuddy(m_headerTemplateFileChooser->m_lineEdit);
    m_ui.m_lblSourceTemplateFile->setBuddy(m_sourceTemplateFileChooser->m_lineEdit);
    // A buddy gives its name only to what lies beside it.
    m_headerTemplateFileChooser->SetNames(m_ui.m_lblHeaderTemplateFile->text(), tr("Browse for the header template"));
    m_sourceTemplateFileChooser->SetNames(m_ui.m_lblSourceTemplateFile->text(), tr("Browse for the source template"));

    // The edits for prefixes and suffixes are left out: whatever they hold, a run may start.
    for (QLineEdit* edit : {m_ui.m_editClassName, m_ui.m_editHeaderFileName, m_ui.m_editSourceFileName})
        connect(edit, SIGNAL(textChanged(QString)), this, SLOT(OnOptionsTextChanged(QString)));
    for (FileChooserWidget* chooser : {m_headerTemplateFileChooser, m_sourceTemplateFileChooser})
        connect(chooser, SIGNAL(filePathChanged(QString)), this, SLOT(OnOptionsTextChanged(QString)));
    connect(m_ui.m_editClassName, SIGNAL(editingFinished()), this, SLOT(OnClassNameEditingFinished()));
}

void CppClassGenerator::ReadSettings()
{
    QSettings settings;
    settings.beginGroup(QLatin1String(SettingsGroup));
    foreach (const Setting& setting, Settings(m_ui))
        setting.edit->setText(settings.value(QLatin1String(setting.key), setting.defaultText).toString());
}

void CppClassGenerator::WriteSettings() const
{
    QSettings settings;
    settings.beginGroup(QLatin1String(SettingsGroup));
    foreach (const Setting& setting, Settings(m_ui))
        settings.setValue(QLatin1String(setting.key), setting.edit->text());
}

void CppClassGenerator::SetCameraName(const char* name)
{
    m_ui.m_editClassName->setText(ClassNameFor(name));
    OnClassNameEditingFinished();
    // Long names differ at their beginning.
    for (QLineEdit* edit : {m_ui.m_editClassName, m_ui.m_editHeaderFileName, m_ui.m_editSourceFileName})
        edit->setCursorPosition(0);
}

void CppClassGenerator::Run(const char* destinationFolder, bool overwrite, const FeatureInfos& features)
{
    const QString folder = tr(destinationFolder) + QDir::separator();
    ProcessFile(
        "header", QDir::cleanPath(folder + Options().headerFileName), overwrite, Options().headerTemplate, features);
    ProcessFile(
        "source", QDir::cleanPath(folder + Options().sourceFileName), overwrite, Options().sourceTemplate, features);
}

void CppClassGenerator::ProcessFile(const char* kind, const QString& outputPath, bool overwrite,
    const QString& templatePath, const FeatureInfos& features)
{
    ReportProcessing(kind, templatePath);
    QFile templateFile(templatePath);
    if (!templateFile.open(QIODevice::ReadOnly | QIODevice::Text))
    {
        Report(tr("Error '") + templateFile.errorString() + QLatin1String("' while reading ") + QLatin1String(kind) +
               QLatin1String(" template file!"));
        return;
    }

    ReportCreating(kind, outputPath);
    QFile outputFile(outputPath);
    if (outputFile.exists() && !overwrite)
    {
        Report(tr("Error: ") + QLatin1String(kind) + QLatin1String(" file '") + outputPath +
               QLatin1String("' already exists and should not be overwritten!"));
        return;
    }
    if (!outputFile.open(QIODevice::WriteOnly | QIODevice::Text))
    {
        Report(tr("Error '") + outputFile.errorString() + QLatin1String("' while creating ") + QLatin1String(kind) +
               QLatin1String(" file!"));
        return;
    }
    QTextStream output(&outputFile);
    ReportDone();

    QTextStream input(&templateFile);
    ProcessTemplate(output, input, features);
    ReportDone();
}

CppOptions CppClassGenerator::Options() const
{
    return {m_ui.m_editClassName->text(), m_ui.m_editHeaderFileName->text(), m_ui.m_editSourceFileName->text(),
        m_ui.m_editGetterPrefix->text(), m_ui.m_editGetterSuffix->text(), m_ui.m_editSetterPrefix->text(),
        m_ui.m_editSetterSuffix->text(), m_headerTemplateFileChooser->m_lineEdit->text(),
        m_sourceTemplateFileChooser->m_lineEdit->text()};
}

void CppClassGenerator::Report(const QString& message)
{
    emit LogMessage(message);
}

void CppClassGenerator::OnOptionsTextChanged(const QString& /*text*/)
{
    qDebug("void CppClassGenerator::OnOptionsTextChanged(const QString&)");
    emit OptionsChanged();
}

void CppClassGenerator::OnClassNameEditingFinished()
{
    CppOptions named;
    named.SetClassName(GetValidIdentifierName(m_ui.m_editClassName->text()));
    m_ui.m_editClassName->setText(named.className);
    // Also over names that were typed by hand: the files follow the class.
    m_ui.m_editHeaderFileName->setText(named.headerFileName);
    m_ui.m_editSourceFileName->setText(named.sourceFileName);
}

#include "CppClassGenerator.h"

#include "FileChooserWidget.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSettings>
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
    const QString templates =
        QCoreApplication::applicationDirPath() + QDir::separator() + QLatin1String("Templates") + QDir::separator();
    const Setting settings[] = {
        {"GetterPrefix", ui.m_editGetterPrefix, QLatin1String("Get")},
        {"GetterSuffix", ui.m_editGetterSuffix, QString()},
        {"SetterPrefix", ui.m_editSetterPrefix, QLatin1String("Set")},
        {"SetterSuffix", ui.m_editSetterSuffix, QString()},
        {"HeaderTemplateFilePath", ui.m_headerTemplateFileChooser->m_lineEdit,
            templates + QLatin1String("CppTemplate.h")},
        {"SourceTemplateFilePath", ui.m_sourceTemplateFileChooser->m_lineEdit,
            templates + QLatin1String("CppTemplate.cpp")},
    };
    QList<Setting> list;
    for (const Setting& setting : settings)
        list.append(setting);
    return list;
}

bool ExistsAt(const QString& path)
{
    return !path.isEmpty() && QFile::exists(path);
}

} // namespace

std::map<KltFeatureDataType, CppClassGenerator::FeatureTypeInfo> CppClassGenerator::SimpleFeatureTypeMap;

CppClassGenerator::CppClassGenerator() : m_ui()
{
    if (!SimpleFeatureTypeMap.empty())
        return;
    SimpleFeatureTypeMap[KltFeatureDataInt] = {"KltInt64_t &", "KltInt64_t"};
    SimpleFeatureTypeMap[KltFeatureDataFloat] = {"double &", "double"};
    SimpleFeatureTypeMap[KltFeatureDataString] = {"std::string &", "const char *"};
    SimpleFeatureTypeMap[KltFeatureDataBool] = {"bool &", "bool"};
    SimpleFeatureTypeMap[KltFeatureDataRaw] = {"OPX::KltAPI::UcharVector &", "const OPX::KltAPI::UcharVector &"};
}

const char* CppClassGenerator::LanguageName() const
{
    return "C++";
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

QWidget* CppClassGenerator::Widget() const
{
    return m_ui.widget;
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

bool CppClassGenerator::OptionsValid() const
{
    return MissingOption().isEmpty();
}

QString CppClassGenerator::MissingOption() const
{
    if (m_ui.m_editClassName->text().isEmpty())
        return tr("Enter a class name.");
    if (m_ui.m_editHeaderFileName->text().isEmpty())
        return tr("Enter a header file name.");
    if (m_ui.m_editSourceFileName->text().isEmpty())
        return tr("Enter a source file name.");
    if (!ExistsAt(m_headerTemplateFileChooser->m_lineEdit->text()))
        return tr("The header template does not exist.");
    if (!ExistsAt(m_sourceTemplateFileChooser->m_lineEdit->text()))
        return tr("The source template does not exist.");
    return QString();
}

void CppClassGenerator::SetCameraName(const char* name)
{
    m_ui.m_editClassName->setText(GetValidIdentifierName(tr(name) + QLatin1String("Camera")));
    OnClassNameEditingFinished();
    // Long names differ at their beginning.
    for (QLineEdit* edit : {m_ui.m_editClassName, m_ui.m_editHeaderFileName, m_ui.m_editSourceFileName})
        edit->setCursorPosition(0);
}

void CppClassGenerator::OnOptionsTextChanged(const QString& text)
{
    Q_UNUSED(text);
    qDebug("void CppClassGenerator::OnOptionsTextChanged(const QString&)");
    emit OptionsChanged();
}

void CppClassGenerator::OnClassNameEditingFinished()
{
    const QString className = GetValidIdentifierName(m_ui.m_editClassName->text());
    m_ui.m_editClassName->setText(className);
    // Also over names that were typed by hand: the files follow the class.
    m_ui.m_editHeaderFileName->setText(className + QLatin1String(".h"));
    m_ui.m_editSourceFileName->setText(className + QLatin1String(".cpp"));
}

#include "JavaClassGenerator.h"

#include <QCoreApplication>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMetaObject>
#include <QVBoxLayout>

namespace
{

const char Context[] = "JavaOptionsWidget";

} // namespace

void JavaClassGenerator::SetupUi(QWidget* parent)
{
    if (parent->objectName().isEmpty())
        parent->setObjectName(QLatin1String(Context));
    parent->resize(267, 82);
    verticalLayout = new QVBoxLayout(parent);
    verticalLayout->setObjectName(QLatin1String("verticalLayout"));
    widget = new QWidget(parent);
    widget->setObjectName(QLatin1String("widget"));
    widget->setAutoFillBackground(true);
    formLayout = new QFormLayout(widget);
    formLayout->setObjectName(QLatin1String("formLayout"));
    AddRow(0, m_lblClassName, m_editClassName, "ClassName", true);
    // The file of a Java class has the name of the class: there is nothing to type.
    AddRow(1, m_lblClassFileName, m_editClassFileName, "ClassFileName", false);
    verticalLayout->addWidget(widget);

    parent->setWindowTitle(QCoreApplication::translate(Context, "Form"));
    m_lblClassName->setText(QCoreApplication::translate(Context, "Class Name"));
    m_lblClassFileName->setText(QCoreApplication::translate(Context, "Class File Name"));

    QMetaObject::connectSlotsByName(parent);
    for (QLineEdit* edit : {m_editClassName, m_editClassFileName})
        connect(edit, SIGNAL(textChanged(QString)), this, SLOT(OnOptionsTextChanged(QString)));
    connect(m_editClassName, SIGNAL(editingFinished()), this, SLOT(OnClassNameEditingFinished()));
}

void JavaClassGenerator::AddRow(int row, QLabel*& label, QLineEdit*& edit, const char* name, bool enabled)
{
    label = new QLabel(widget);
    label->setObjectName(QLatin1String("m_lbl") + QLatin1String(name));
    label->setEnabled(enabled);
    formLayout->setWidget(row, QFormLayout::LabelRole, label);
    edit = new QLineEdit(widget);
    edit->setObjectName(QLatin1String("m_edit") + QLatin1String(name));
    edit->setEnabled(enabled);
    edit->setMinimumSize(144, 20);
    formLayout->setWidget(row, QFormLayout::FieldRole, edit);
    label->setBuddy(edit);
}

bool JavaClassGenerator::OptionsValid() const
{
    return !m_editClassName->text().isEmpty() && !m_editClassFileName->text().isEmpty();
}

void JavaClassGenerator::SetCameraName(const char* name)
{
    m_editClassName->setText(QString::fromLatin1(name));
    OnClassNameEditingFinished();
}

void JavaClassGenerator::OnOptionsTextChanged(const QString& /*text*/)
{
    emit OptionsChanged();
}

void JavaClassGenerator::OnClassNameEditingFinished()
{
    m_editClassFileName->setText(m_editClassName->text() + QLatin1String(".java"));
}

#include "FolderChooserWidget.h"

#include "PathColor.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QIcon>
#include <QPushButton>

FolderChooserWidget::FolderChooserWidget(QWidget* parent)
    : QWidget(parent),
      m_layout(new QHBoxLayout(this)),
      m_lineEdit(new QLineEdit(this)),
      m_browseButton(new QPushButton(this))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->addWidget(m_lineEdit);
    m_browseButton->setIcon(QIcon(QLatin1String(":/KoltaClassGenerator/Resources/BrowseFolder_16.png")));
    m_layout->addWidget(m_browseButton);

    connect(m_browseButton, SIGNAL(clicked()), this, SLOT(OnBrowseClicked()));
    connect(m_lineEdit, SIGNAL(textChanged(QString)), this, SLOT(OnTextChanged(QString)));
}

void FolderChooserWidget::OnTextChanged(const QString& text)
{
    ColorByExistence(m_lineEdit, text);
}

void FolderChooserWidget::OnBrowseClicked()
{
    // The caption of the file chooser is wanted here, too: users know the dialog by it.
    const QString path = QFileDialog::getExistingDirectory(this, QLatin1String("Select File"), m_lineEdit->text());
    if (!path.isEmpty())
        m_lineEdit->setText(path);
}

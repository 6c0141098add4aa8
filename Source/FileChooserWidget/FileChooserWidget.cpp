#include "FileChooserWidget.h"

#include "PathColor.h"
#include "Window/PathEdit.h"
#include "Window/PlainText.h"

#include <QAction>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QIcon>
#include <QPushButton>
#include <QStringList>
#include <QUrl>

namespace
{

/// Qt separates the patterns of a filter by blanks only; two semicolons separate filters. And it takes the dot in the
/// pattern for all files at its word: those without an extension would be left out.
QString DialogFilter(const QString& filter)
{
    QStringList filters = filter.split(QLatin1String(";;"));
    filters.replaceInStrings(QLatin1String(";"), QLatin1String(" "));
    filters.replaceInStrings(QLatin1String("(*.*)"), QLatin1String("(*)"));
    return filters.join(QLatin1String(";;"));
}

} // namespace

FileChooserWidget::FileChooserWidget(QWidget* parent)
    : QWidget(parent),
      m_layout(new QHBoxLayout(this)),
      m_lineEdit(new PathEdit(this)),
      m_browseButton(new QPushButton(this)),
      m_caption(QLatin1String("Select File"))
{
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setObjectName(QLatin1String("horizontalLayout"));
    // The name of the destination edit of the main window, too: style sheets address both by it.
    m_lineEdit->setObjectName(QLatin1String("m_editDestinationFolder"));
    m_layout->addWidget(m_lineEdit);
    m_browseButton->setObjectName(QLatin1String("m_btnBrowse"));
    m_browseButton->setIcon(QIcon(QLatin1String(":/KoltaClassGenerator/Resources/BrowseFolder_16.png")));
    m_layout->addWidget(m_browseButton);

    connect(m_browseButton, SIGNAL(clicked()), this, SLOT(OnBrowseClicked()));
    connect(m_lineEdit, SIGNAL(textChanged(QString)), this, SLOT(OnTextChanged(QString)));
}

void FileChooserWidget::SetNames(const QString& edit, const QString& button)
{
    m_lineEdit->setAccessibleName(edit);
    m_browseButton->setAccessibleName(button);
    m_browseButton->setToolTip(button);
}

void FileChooserWidget::SetDefault(const QString& path, const QString& action)
{
    m_default = path;
    auto* leadsBack = new QAction(action, this);
    connect(leadsBack, SIGNAL(triggered()), this, SLOT(OnDefaultTriggered()));
    m_lineEdit->addAction(leadsBack);
}

void FileChooserWidget::OnTextChanged(const QString& text)
{
    ColorByExistence(m_lineEdit, text);
    QString wrong = tr("The file does not exist.");
    if (!m_default.isEmpty())
        wrong += QLatin1Char('\n') + tr("The default is ") + m_default;
    m_lineEdit->setToolTip(QFile::exists(text) ? QString() : AsPlainText(wrong));
    emit filePathChanged(text);
}

void FileChooserWidget::OnBrowseClicked()
{
    QFileDialog dialog(this, m_caption, m_lineEdit->text(), DialogFilter(m_filter));
    dialog.setFileMode(QFileDialog::ExistingFile);
    const QUrl defaultFolder = QUrl::fromLocalFile(QFileInfo(m_default).path());
    QList<QUrl> places = dialog.sidebarUrls();
    if (!m_default.isEmpty())
        dialog.setSidebarUrls(places << defaultFolder);
    if (dialog.exec() == QDialog::Accepted)
        m_lineEdit->setText(dialog.selectedFiles().value(0));
    // The dialog keeps its sidebar for the next one, of whatever program.
    places = dialog.sidebarUrls();
    places.removeOne(defaultFolder);
    dialog.setSidebarUrls(places);
}

void FileChooserWidget::OnDefaultTriggered()
{
    m_lineEdit->setText(m_default);
}

#ifndef FOLDERCHOOSERWIDGET_H
#define FOLDERCHOOSERWIDGET_H

#include <QWidget>

class QHBoxLayout;
class QLineEdit;
class QPushButton;

/// A line edit for the path of an existing folder, with a button that opens a folder dialog. Coloured like
/// FileChooserWidget.
class FolderChooserWidget : public QWidget
{
    Q_OBJECT

public:
    explicit FolderChooserWidget(QWidget* parent = nullptr);

    QHBoxLayout* m_layout;
    QLineEdit* m_lineEdit; ///< Holds the path.
    QPushButton* m_browseButton;

private slots:
    void OnTextChanged(const QString& text);
    void OnBrowseClicked();
};

#endif

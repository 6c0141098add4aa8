#ifndef FILECHOOSERWIDGET_H
#define FILECHOOSERWIDGET_H

#include <QString>
#include <QWidget>

class QHBoxLayout;
class QLineEdit;
class QPushButton;

/// A line edit for the path of an existing file, with a button that opens a file dialog.
///
/// The edit turns green or red with every change of its text, depending on whether something exists there. Its tool tip
/// says what is wrong.
class FileChooserWidget : public QWidget
{
    Q_OBJECT

public:
    explicit FileChooserWidget(QWidget* parent = nullptr);

    /// For people who hear the window: the name of the edit, and of the button, which shows it as its tool tip, too.
    void SetNames(const QString& edit, const QString& button);

    /// Gives the context menu of the edit an action that leads back to the file at \a path, whose folder stands in the
    /// sidebar of the file dialog.
    void SetDefault(const QString& path, const QString& action);

    QHBoxLayout* m_layout;
    QLineEdit* m_lineEdit; ///< Holds the path.
    QPushButton* m_browseButton;
    QString m_caption; ///< Title of the file dialog.
    QString m_filter;  ///< Name filter of the file dialog, its patterns separated by semicolons or blanks.

signals:
    /// The path was changed, by whomever.
    void filePathChanged(const QString& text);

private slots:
    void OnTextChanged(const QString& text);
    void OnBrowseClicked();
    void OnDefaultTriggered();

private:
    QString m_default;
};

#endif

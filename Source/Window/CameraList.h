#ifndef CAMERALIST_H
#define CAMERALIST_H

#include <QListWidget>

/// A list of single selection in which the highlighted row is the current one at every moment.
///
/// A row is selected by a press or a key, and nothing that the user does takes the selection away. Dragging does
/// nothing. GUI thread only.
class CameraList : public QListWidget
{
public:
    using QListWidget::QListWidget;

    /// Selects the row that begins with what was typed last.
    void keyboardSearch(const QString& search) override;

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    void MakeSelectedCurrent();

    int m_lastSearch = 0; ///< How many milliseconds it took.
};

#endif

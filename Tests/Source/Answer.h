#ifndef ANSWER_H
#define ANSWER_H

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

/// Hands the next modal dialog to \a answer, which has to close it.
template <class Dialog, class Answer>
void AnswerNext(Answer answer)
{
    QTimer::singleShot(50, qApp,
        [answer]
        {
            Dialog* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            if (dialog != nullptr)
                answer(*dialog);
            else
                AnswerNext<Dialog>(answer);
        });
}

/// Presses \a button twice and chooses \a path in the file dialog, which is cancelled the first time.
/// \return what the dialog shows at first, and the text of \a edit after each time
inline QString Browse(const QLineEdit* edit, QPushButton* button, const QString& path)
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QString seen;
    QString after;
    for (bool accepted : {false, true})
    {
        AnswerNext<QFileDialog>(
            [path, accepted, &seen](QFileDialog& dialog)
            {
                seen = dialog.windowTitle() + '|' + dialog.directory().path() + '|' + dialog.nameFilters().join(";;");
                dialog.setDirectory(QFileInfo(path).path());
                dialog.findChild<QLineEdit*>("fileNameEdit")->setText(path);
                QMetaObject::invokeMethod(&dialog, accepted ? "accept" : "reject");
            });
        button->click();
        after += (accepted ? "|" : seen + '|') + edit->text();
    }
    return after;
}

#endif

#include "EndWatcher.h"
#include "KoltaClassGenerator.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

#include <exception>

namespace
{

void ShowError(const std::exception& error)
{
    QMessageBox box(QMessageBox::Critical, QLatin1String("Error"), QString::fromLatin1(error.what()));
    box.setTextFormat(Qt::PlainText);
    box.setDefaultButton(box.addButton(QLatin1String("Exit"), QMessageBox::AcceptRole));
    box.exec();
}

} // namespace

int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    const EndWatcher watcher;
    QObject::connect(&watcher, SIGNAL(EndRequested()), &application, SLOT(closeAllWindows()));
    try
    {
        KoltaClassGenerator window;
        window.show();
        return QApplication::exec();
    }
    catch (const std::exception& error)
    {
        ShowError(error);
        return -1;
    }
}

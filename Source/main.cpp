#include "KoltaClassGenerator.h"
#include "QtCompat.h"
#include "Utf8Locale.h"
#include "Window/EndWatcher.h"

#include <QApplication>
#include <QIcon>
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

/// What the desktop shows for every window, boxes among them.
void SetLook(QApplication& application)
{
    QApplication::setWindowIcon(QIcon(QLatin1String(":/KoltaClassGenerator/Resources/stripes_256.png")));
    // By its name, since versions of Qt that do not know it simply keep it.
    application.setProperty("desktopFileName", QLatin1String("example.opx.koltaclassgenerator"));
}

} // namespace

int main(int argc, char* argv[])
{
    UseUtf8Locale();
    QApplication application(argc, argv);
    SetLook(application);
    UseUtf8ForTranslations();
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

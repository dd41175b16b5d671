#include "Application.h"
#include "Resources.h"
#include "ShellPanes.h"
#include "mdiMain.h"

#include <QApplication>

int main(int argc, char** argv)
{
    QApplication qt(argc, argv);
    QApplication::setApplicationName(application::title());
    QApplication::setApplicationVersion(application::version());
    QApplication::setQuitOnLastWindowClosed(false);
    initQuorvaneResources();
    registerShellPanes();

    mdiMain window(QApplication::arguments().mid(1));
    window.MDIForm_Load();
    window.show();
    return QApplication::exec();
}

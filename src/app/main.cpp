#include "Application.h"
#include "DatabasesRoom.h"
#include "FilesRoom.h"
#include "InterchangeRoom.h"
#include "MoveCopyRoom.h"
#include "Resources.h"
#include "ShellPanes.h"
#include "UsersRoom.h"
#include "WorkbenchStyle.h"
#include "mdiMain.h"

#include <QApplication>

int main(int argc, char** argv)
{
    // As it was given: the application takes out the options that it knows.
    QStringList commandLine;
    for (int i = 1; i < argc; ++i)
        commandLine.append(QString::fromLocal8Bit(argv[i]));
    QApplication qt(argc, argv);
    QApplication::setApplicationName(application::title());
    QApplication::setApplicationVersion(application::version());
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(new WorkbenchStyle);
    initQuorvaneResources();
    registerShellPanes();
    registerFilesRoom();
    registerDatabasesRoom();
    registerUsersRoom();
    registerInterchangeRoom();
    registerMoveCopyRoom();

    mdiMain window(commandLine);
    window.MDIForm_Load();
    window.show();
    return QApplication::exec();
}

#include "DatabasesRoom.h"
#include "FilesRoom.h"
#include "ShellPanes.h"
#include "UsersRoom.h"
#include "WorkbenchStyle.h"
#include "mdiMain.h"

#include <QApplication>
#include <QEvent>
#include <QMainWindow>

#include <cstdlib>
#include <cstring>
#include <memory>

namespace
{

/// Ends the process when the window that it watches has been painted for the first time.
class UntilPainted : public QObject
{
public:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            QMetaObject::invokeMethod(
                watched, [] { std::_Exit(0); }, Qt::QueuedConnection);
        return false;
    }
};

} // namespace

/// Shows the window that the argument names, "empty" or "workbench", and ends at its first paint.
int main(int argc, char** argv)
{
    const bool empty = argc > 1 && std::strcmp(argv[1], "empty") == 0;
    QApplication application(argc, argv);
    UntilPainted untilPainted;
    if (empty) {
        QMainWindow window;
        window.resize(640, 580);
        window.installEventFilter(&untilPainted);
        window.show();
        return QApplication::exec();
    }
    QApplication::setStyle(new WorkbenchStyle);
    registerShellPanes();
    registerFilesRoom();
    registerDatabasesRoom();
    registerUsersRoom();
    mdiMain window({});
    window.MDIForm_Load();
    window.installEventFilter(&untilPainted);
    window.show();
    return QApplication::exec();
}

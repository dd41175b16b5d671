#include "RecordingOutside.h"
#include "ScriptedBoxes.h"
#include "ScriptedFileDialogs.h"
#include "TemporarySettings.h"

#include <QApplication>

#include <gtest/gtest.h>

/// The main() of every test program. A test that does not script its boxes and file dialogs fails at the first one
/// instead of waiting for a user, and nothing reaches the user's settings, desktop or printer.
int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication::setStyle("Fusion");

    const TemporarySettings settings;
    QApplication app(argc, argv);
    // Tests hide and close windows at will.
    QApplication::setQuitOnLastWindowClosed(false);

    const ScriptedBoxes boxes;
    const ScriptedFileDialogs fileDialogs;
    const RecordingOutside outside;
    return RUN_ALL_TESTS();
}

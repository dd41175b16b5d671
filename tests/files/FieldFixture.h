#pragma once

#include "DialogScript.h"
#include "FieldSteps.h"
#include "MainWindowFixture.h"

#include "FieldCommands.h"

/// The main window with the commands on the fields of a file, and a user in front of their dialogs.
class FieldTest : public MainWindowTest
{
protected:
    FieldTest() { registerFieldCommands(); }

    DialogScript dialogs;
};

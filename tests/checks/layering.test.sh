#!/usr/bin/env bash
# shellcheck source=tests/checks/fixture.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/fixture.sh"
CHECK=layering

# The faultless project with a shell, two feature rooms and the composition root on top.
fresh
put src/shell/CMakeLists.txt <<<'quorvane_room(shell USES quorvane_catalog)'
put src/shell/Pane.h <<<$'#pragma once\n#include "modString.h"'
put src/files/CMakeLists.txt <<<'quorvane_room(files USES quorvane_shell)'
put src/files/frmFile.h <<<$'#pragma once\n#include "Pane.h"\n#include "modString.h"'
put src/users/CMakeLists.txt <<<'quorvane_room(users USES quorvane_shell)'
put src/users/frmUser.h <<<$'#pragma once\n#include "Pane.h"'
put src/app/CMakeLists.txt <<<'target_link_libraries(quorvane PRIVATE quorvane_files quorvane_users quorvane_warnings)'
put src/app/main.cpp <<<$'#include "frmFile.h"\n#include "frmUser.h"'
keep

fresh
passes "arrows that run downward"

fresh
add src/catalog/modString.h <<<'#include "Pane.h"'
finds "an include upward" src/catalog/modString.h:15 'lets catalog include "Pane.h" of shell'

fresh
add src/users/frmUser.h <<<'#include "frmFile.h"'
finds "a feature room that includes another" src/users/frmUser.h:3 'lets users include "frmFile.h" of files'

fresh
add src/platform/dao/Engine.h <<<'#include <Pane.h>'
finds "an include upward in angle brackets" src/platform/dao/Engine.h:7 "lets dao include"

fresh
put src/platform/system/CMakeLists.txt <<<'quorvane_room(system USES quorvane_catalog)'
finds "an arrow upward in CMake" src/platform/system/CMakeLists.txt:1 "draws an arrow from system to catalog"

fresh
put src/catalog/CMakeLists.txt <<<'quorvane_room(catalog)'
finds "an include that CMake does not know of" src/catalog/modString.h:3 "add quorvane_system behind USES in src/catalog/CMakeLists.txt"

fresh
put src/users/CMakeLists.txt <<<'quorvane_room(users USES quorvane_shell quorvane_dao)'
finds "an arrow in CMake that no include follows" src/users/CMakeLists.txt:1 "no include follows"

fresh
put src/shell/Tree.h <<<$'#pragma once\n#include "Node.h"'
put src/shell/Node.h <<<$'#pragma once\n#include "Branch.h"'
put src/shell/Branch.h <<<$'#pragma once\n#include "Tree.h"'
label="three headers in a circle"
look
if ((status != 1)) || ! grep -qE '(Tree|Node|Branch)\.h:2: closes the circle \w+\.h -> \w+\.h -> \w+\.h -> \w+\.h; ' <<<"$output"; then
    fail "should have shown the circle"
fi

put src/shell/Branch.h <<<'#pragma once'
put src/shell/Branch.cpp <<<$'#include "Branch.h"\n#include "Tree.h"'
passes "a source that includes what includes its header"
label="classes that know each other"
look classes
if ((status != 1)) || ! grep -qE 'closes the circle \w+ -> \w+ -> \w+ -> \w+; ' <<<"$output"; then
    fail "should have shown the circle"
fi

fresh
put src/shell/Branch.h <<<'#pragma once'
put src/shell/Tree.h <<<$'#pragma once\n#include "Branch.h"'
put src/shell/Node.h <<<$'#pragma once\n#include "Branch.h"\n#include "Tree.h"'
passes "two ways to one file, which are no circle"

fresh
put src/attic/Old.h <<<'#pragma once'
finds "a folder that is no room" src/attic/Old.h:1 "lies in no known room"

fresh
put src/shell/Boxes.h <<<'#pragma once'
label="two headers of one name"
look
if ((status != 1)) || [[ $output != *"bears the same name"* ]]; then
    fail "should have told of the second header"
fi

fresh
put src/files/frmFile.h <<<$'#pragma once\n#include "../shell/Pane.h"'
finds "an include by a path" src/files/frmFile.h:2 "include by bare file name"

fresh
add src/shell/Pane.h <<<'#include "Driver.h"'
finds "the workbench including the driver" src/shell/Pane.h:3 "from the bundled driver"

fresh
add src/app/CMakeLists.txt <<<'target_link_libraries(quorvane PRIVATE tarnwickodbc)'
finds "the workbench linking the driver" src/app/CMakeLists.txt:2 "names the bundled driver"

fresh
add driver/Driver.cpp <<<'#include "modString.h"'
finds "the driver including the workbench" driver/Driver.cpp:2 "from the workbench"

fresh
put driver/CMakeLists.txt <<<'target_link_libraries(tarnwickodbc PRIVATE quorvane_system)'
finds "the driver linking the workbench" driver/CMakeLists.txt:1 "makes the driver depend"
finish

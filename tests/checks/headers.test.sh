#!/usr/bin/env bash
# shellcheck source=tests/checks/fixture.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/fixture.sh"
CHECK=headers

fresh
passes "guarded headers and sources that begin with their own"

fresh
put src/shell/Open.h <<<$'// No guard.\nint open();'
finds "a header without a guard" src/shell/Open.h:2 "does not begin with #pragma once"

fresh
put src/shell/Late.h <<<$'#include <vector>\n#pragma once'
finds "a guard that comes late" src/shell/Late.h:1 "does not begin with #pragma once"

fresh
put src/shell/Old.h <<<$'#ifndef OLD_H\n#define OLD_H\n#endif'
finds "a guard of the old kind" src/shell/Old.h:1 "does not begin with #pragma once"

fresh
put src/shell/Pane.h <<<'#pragma once'
put src/shell/Pane.cpp <<<$'// Panes.\n#include <vector>\n\n#include "Pane.h"'
finds "a source that begins with another header" src/shell/Pane.cpp:2 'include "Pane.h" first'

fresh
put src/shell/Pane.h <<<'#pragma once'
put src/shell/Pane.cpp <<<'int pane();'
finds "a source without its own header" src/shell/Pane.cpp:1 "does not include its own header"

fresh
put tests/shell/PaneTest.cpp <<<$'#include <vector>\n#include "Pane.h"'
passes "a source that has no header"
finish

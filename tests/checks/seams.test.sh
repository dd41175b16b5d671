#!/usr/bin/env bash
# shellcheck source=tests/checks/fixture.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/fixture.sh"
CHECK=seams

fresh
passes "each outside thing in its room"

for header in sql sqlext sqltypes odbcinst; do
    fresh
    put src/catalog/Direct.h <<<$'#pragma once\n#include <'"$header"'.h>'
    finds "<$header.h> outside of the ODBC layer" src/catalog/Direct.h:2 "includes an ODBC header"
done

fresh
put src/platform/system/Direct.h <<<$'#pragma once\n  #  include "sql.h"'
finds "an ODBC header in a neighbouring room, spelled oddly" src/platform/system/Direct.h:2 "includes an ODBC header"

names=(QMessageBox QFileDialog QDesktopServices QSettings QPrinter QPrintDialog QClipboard)
fresh
for name in "${names[@]}"; do
    put "src/shell/Use$name.cpp" <<<$'void direct()\n{\n    '"$name"$' outside;\n}'
    put "src/shell/Include$name.cpp" <<<"#include <$name>"
done
look
for name in "${names[@]}"; do
    found "$name outside of its room" "src/shell/Use$name.cpp:3" "reaches past the seam"
    found "<$name> outside of its room" "src/shell/Include$name.cpp:1" "reaches past the seam"
done

fresh
put src/shell/Direct.cpp <<<'auto text = QGuiApplication::clipboard()->text();'
finds "the clipboard without its class" src/shell/Direct.cpp:1 "reaches past the seam"

fresh
put src/shell/Mention.cpp <<<$'// A QMessageBox would block here.\nconst char* name = "QSettings"; /* QClipboard\nQPrinter */\nstruct MyQSettings;'
passes "mere mention in comments, literals and longer names"
finish

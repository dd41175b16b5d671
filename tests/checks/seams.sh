#!/usr/bin/env bash
# ODBC is spoken in one room, and boxes, file dialogs, settings, printer, clipboard and the shell are reached through another.
# shellcheck source=tests/checks/lib.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib.sh"
enter_project "$@"

why="the seams of docs/architecture.md hold every test: what goes past them can be neither watched nor answered"

files=$(cpp_files src)
require "$files"
code=$(code_of <<<"$files")

# places CODE PATTERN ROOM WHAT MEND: the lines that match outside of the one room where they belong.
places() {
    local place
    { grep -E "^[^:]*:[0-9]+:.*($2)" <<<"$1" || true; } | { grep -v "^$3/" || true; } | cut -d: -f1,2 |
        while IFS= read -r place; do
            finding "$place" "$4" "$5"
        done
}

headers='[[:space:]]*#[[:space:]]*include[[:space:]]*[<"](sql|sqlext|sqltypes|sqlucode|odbcinst|odbcinstext)\.h[>"]'
names='(^|[^A-Za-z0-9_])(QMessageBox|QFileDialog|QDesktopServices|QSettings|QPrint[A-Za-z]*|QClipboard)([^A-Za-z0-9_]|$)'
calls='(QGuiApplication|QApplication|qApp)(::|->)clipboard[[:space:]]*\('

findings=$(
    places "$code" "$headers" src/platform/dao "includes an ODBC header" \
        "go through the classes of src/platform/dao, which alone speak ODBC"
    places "$code" "$names|$calls" src/platform/system "reaches past the seam to the outside" \
        "go through src/platform/system, whose boxes, dialogs, settings, printer, clipboard and shell can be stood in for"
)
verdict "$why" "$files" "$findings"

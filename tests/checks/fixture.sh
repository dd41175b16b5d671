# Shared by the tests of the checks: a small, faultless project in a temporary folder, and what a check says to it.
# shellcheck shell=bash

set -euo pipefail
# A git hook names its own repository in these, and fixtures must never write there.
unset GIT_DIR GIT_WORK_TREE GIT_INDEX_FILE

CHECKS=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd -P)
WORKBENCH=$(mktemp -d)
trap 'rm -rf -- "$WORKBENCH"' EXIT
cases=0
failures=0

# fresh: a new faultless project, which becomes the current folder.
fresh() {
    if [[ ! -d $WORKBENCH/pristine ]]; then
        mkdir -p "$WORKBENCH/pristine"
        cd -- "$WORKBENCH/pristine"
        furnish
    fi
    rm -rf -- "$WORKBENCH/project"
    cp -r -- "$WORKBENCH/pristine" "$WORKBENCH/project"
    cd -- "$WORKBENCH/project"
}

# keep: from now on, fresh gives the project as it is at this moment.
keep() {
    rm -rf -- "$WORKBENCH/pristine"
    cp -r -- "$WORKBENCH/project" "$WORKBENCH/pristine"
}

furnish() {
    cp -- "$CHECKS/../../.clang-format" .
    put README.md <<'TEXT'
A project of two rooms.
TEXT
    put scripts/greet <<'TEXT'
#!/usr/bin/env bash
echo "hello"
TEXT
    chmod +x scripts/greet
    put src/platform/system/CMakeLists.txt <<'TEXT'
quorvane_room(system USES Qt6::Widgets)
TEXT
    put src/platform/system/Boxes.h <<'TEXT'
#pragma once

#include <QMessageBox>

int ask();
TEXT
    put src/platform/system/Boxes.cpp <<'TEXT'
#include "Boxes.h"

int ask()
{
    return QMessageBox::Ok;
}
TEXT
    put src/platform/dao/CMakeLists.txt <<'TEXT'
quorvane_room(dao USES quorvane_system)
TEXT
    put src/platform/dao/Engine.h <<'TEXT'
// What every statement passes through.
#pragma once

#include <sql.h>

#include "Boxes.h"
TEXT
    put src/catalog/CMakeLists.txt <<'TEXT'
# The names and types of the catalog; quorvane_shell stands above it.
quorvane_room(catalog USES quorvane_dao)
TEXT
    put src/catalog/modString.h <<'TEXT'
#pragma once

#include "Boxes.h"
#include "Engine.h"

// What deletes a row, by hand or not, is said elsewhere: delete it there, with no QMessageBox and no "shell.h".
class Words
{
public:
    Words(const Words&) = delete;
    const char* text() const { return "delete row /* no comment"; }
    long count() const { return 1'000'000; }
    const char* raw() const { return R"(delete "all" of SIGNAL(x))"; }
};
TEXT
    put driver/Driver.h <<'TEXT'
#pragma once

#include <sqlext.h>
TEXT
    put driver/Driver.cpp <<'TEXT'
#include "Driver.h"
TEXT
}

# put FILE: writes its input there.
put() {
    if [[ $1 == */* ]]; then
        mkdir -p -- "${1%/*}"
    fi
    cat >"$1"
}

# add FILE: appends its input.
add() { cat >>"$1"; }

# look [WORD...]: runs the check on the current project, with further arguments.
# shellcheck disable=SC2120
look() {
    status=0
    output=$(bash "$CHECKS/$CHECK.sh" "$PWD" "$@" 2>&1) || status=$?
    cases=$((cases + 1))
}

fail() {
    failures=$((failures + 1))
    printf 'FAILED: %s\n    %s\n    the check ended with %d and said:\n' "$label" "$1" "$status"
    sed 's/^/    | /' <<<"$output"
}

# passes LABEL: the check finds nothing in the current project.
passes() {
    label=$1
    look
    if ((status != 0)); then
        fail "should have passed"
    fi
}

# finds LABEL PLACE TEXT: the check fails, and one line of what it says names the place and holds the text.
finds() {
    label=$1
    look
    found "$@"
}

# found LABEL PLACE TEXT: the same of what the check has said already.
found() {
    label=$1
    if ((status != 1)); then
        fail "should have found a fault"
    elif ! grep -F -- "$2: " <<<"$output" | grep -F -q -- "$3"; then
        fail "should have named $2 with: $3"
    elif ! grep -q '^Why: ' <<<"$output"; then
        fail "should have said why"
    fi
}

# finish: the result of all cases.
finish() {
    if ((failures > 0)); then
        printf '%d of %d cases failed\n' "$failures" "$cases"
        exit 1
    fi
    printf '%d cases passed\n' "$cases"
}

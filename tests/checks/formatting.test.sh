#!/usr/bin/env bash
# shellcheck source=tests/checks/fixture.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/fixture.sh"
CHECK=formatting

fresh
passes "formatted files"

put src/catalog/Crooked.cpp <<'TEXT'
int straight();

int   crooked( ) { return straight( ); }
TEXT
finds "a crooked line" src/catalog/Crooked.cpp:3 "run scripts/format src/catalog/Crooked.cpp"

fresh
put driver/Crooked.h <<'TEXT'
#pragma once
int  crooked();
TEXT
finds "a crooked header of the driver" driver/Crooked.h:2 "is not formatted"

# Without the formatter nothing is judged, and that must show.
fresh
label="no formatter on the machine"
mkdir "$WORKBENCH/bin"
for tool in bash dirname cat grep sed awk find sort tr xargs head wc git nproc test; do
    if path=$(command -v "$tool"); then
        ln -sf "$path" "$WORKBENCH/bin/$tool"
    fi
done
PATH=$WORKBENCH/bin look
if ((status != 1)) || [[ $output != *"run scripts/setup"* ]]; then
    fail "should have failed and pointed to scripts/setup"
fi

rm -rf src driver
label="a project without sources"
look
if ((status != 1)); then
    fail "should have refused to pass on nothing"
fi
finish

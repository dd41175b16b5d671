#!/usr/bin/env bash
# What the checks take for a file of the project: the same in a checkout and in an unpacked archive.
# shellcheck source=tests/checks/fixture.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/fixture.sh"
CHECK=headers

bad() { put "$1" <<<'int open();'; }

# In an archive: all but build folders.
fresh
bad build/dev/Made.h
bad other/CMakeCache.txt
bad src/out/Made.h
touch src/out/CMakeCache.txt
passes "an archive with build folders"
bad src/shell/Open.h
finds "an archive with a fault" src/shell/Open.h:1 "#pragma once"

# In a checkout: what is tracked and what is new, but nothing that git ignores, and nothing that was taken away.
checkout() {
    fresh
    git init -q .
    git config user.name somebody
    git config user.email somebody@example.org
    put .gitignore <<<$'/build/\n*.gen.h'
    put src/shell/Gone.h <<<'#pragma once'
    git add -A
    git commit -q -m "A project"
}
if command -v git >/dev/null; then
    checkout
    bad build/Made.h
    bad src/shell/Made.gen.h
    rm src/shell/Gone.h
    passes "a checkout with ignored files"
    bad src/shell/Open.h
    finds "a checkout with a new file at fault" src/shell/Open.h:1 "#pragma once"
    git add src/shell/Open.h
    finds "a checkout with a tracked file at fault" src/shell/Open.h:1 "#pragma once"
    # A project unpacked inside of somebody else's checkout is looked at by its own files.
    put .gitignore <<<'/inner/'
    mkdir inner
    cp -r src .clang-format inner
    cd inner
    finds "an archive within a checkout" src/shell/Open.h:1 "#pragma once"
fi
finish

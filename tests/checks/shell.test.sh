#!/usr/bin/env bash
# shellcheck source=tests/checks/fixture.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/fixture.sh"
CHECK=shell

fresh
passes "sound scripts"

put scripts/broken <<<$'#!/usr/bin/env bash\nif true; then'
chmod +x scripts/broken
label="a script that does not parse"
look
if ((status != 1)) || ! grep -qE '^scripts/broken:[0-9]+: does not parse' <<<"$output"; then
    fail "should have told where it breaks"
fi

fresh
chmod -x scripts/greet
finds "a command that cannot be executed" scripts/greet:1 "chmod +x scripts/greet"

fresh
# shellcheck disable=SC2016
add scripts/greet <<<'cd $1'
finds "a fault that shellcheck knows" scripts/greet:3 "SC2164"
finish

#!/usr/bin/env bash
# shellcheck source=tests/checks/fixture.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/fixture.sh"
CHECK=words

fresh
passes "plain words"

# Each word is put together here, so that this file does not hold it.
words=("see Pa""rt 4.2" "as the sp""ec says" "what the sp""ecification says" "read sp""ec.md" "in sha""red/design"
    "from des""ign.md" "the hand""book" "fixes iss""ue #12" "a sub""agent" "a hel""per session" "(/wo""rk/main/src)"
    "in /ro""ot/.odbc.ini" "TO""DO: more" "FIX""ME")
fresh
for word in "${words[@]}"; do
    add README.md <<<"$word"
    add src/catalog/modString.h <<<"// $word"
done
look
for i in "${!words[@]}"; do
    found "${words[i]}" "README.md:$((i + 2))" says
    found "${words[i]} in a comment" "src/catalog/modString.h:$((i + 15))" says
done

fresh
put "docs/sp""ec.md" <<<'Words.'
finds "a file's name" "docs/sp""ec.md:1" "bears such a word in its name"

fresh
add README.md <<'TEXT'
The particular part 4 of a special network/path and a specific issue; specification of a mask; ~/work/here, redesigned.
The list todo is a variable.
TEXT
passes "words that only look alike"
finish

#!/usr/bin/env bash
# Words that mean nothing to a reader of this project: papers that are not in it, machines that are not theirs, notes to oneself.
# shellcheck source=tests/checks/lib.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib.sh"
enter_project "$@"

why="the project explains itself: a reader has this folder and nothing else"

# Perl's kind of pattern, a tab, how to mend it. A letter of each stands in brackets so that this file passes its own test.
patterns=$(
    cat <<'LIST'
\b[P]art [0-9]+\.[0-9]+	say what the program does, not where it was written down
(?i)\b(the|per|our|this) [s]pec(ification)?\b	say what the program does, not where it was written down
(?i)\b[s]pec\.md\b	say what the program does, not where it was written down
(?i)\b[s]hared/(spec|design|style)	name a document of docs/
(?i)\b(design|style)\.[m]d\b	name a document of docs/
(?i)\b[h]andbook\b	name a document of docs/
(?i)\b[i]ssue #?[0-9]+	give the reason itself
(?i)\b[s]ub-?agents?\b	give the reason itself
(?i)\b[h]elper [s]essions?\b	give the reason itself
(?<![\w./~}-])/([w]ork|[r]oot|[U]sers)/	a path of one machine: derive it from the project's folder or use a temporary one
\b([T]ODO|[F]IXME)\b	do it, or say what is missing in plain words
LIST
)

files=$(all_files)
require "$files"
# One reading with all patterns at once finds the few lines that each pattern is then tried on.
any=$(cut -f1 <<<"$patterns" | sed 's/.*/(?:&)/' | paste -sd '|')
suspects=$(tr '\n' '\0' <<<"$files" | { xargs -0 -r grep -HInP -- "$any" || true; })
findings=$(
    while IFS=$'\t' read -r pattern mend; do
        while IFS=: read -r file line text; do
            if word=$(grep -oP -m1 -- "$pattern" <<<"$text"); then
                finding "$file:$line" "says \"${word%%$'\n'*}\"" "$mend"
            fi
        done <<<"$suspects"
        { grep -P -- "$pattern" <<<"$files" || true; } | while IFS= read -r file; do
            finding "$file:1" "bears such a word in its name" "$mend"
        done
    done <<<"$patterns"
)
verdict "$why" "$files" "$findings"

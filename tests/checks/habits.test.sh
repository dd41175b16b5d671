#!/usr/bin/env bash
# shellcheck source=tests/checks/fixture.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/fixture.sh"
CHECK=habits

fresh
passes "a project of good habits"

fresh
put src/shell/Connect.cpp <<<'void f() { connect(a, SIGNAL(x()), b, c); }'
finds "a signal by string" src/shell/Connect.cpp:1 "connects by a string"

fresh
put tests/shell/Connect.cpp <<<'void f() { connect(a, b, c, SLOT (x())); }'
finds "a slot by string" tests/shell/Connect.cpp:1 "connects by a string"

fresh
put src/shell/Fill.cpp <<<'void f() { box->blockSignals(true); }'
finds "blocked signals" src/shell/Fill.cpp:1 "silences"

fresh
put src/shell/Fill.cpp <<<'QSignalBlocker quiet(box);'
finds "a signal blocker" src/shell/Fill.cpp:1 "silences"

for expression in "delete row;" "delete[] rows;" "delete [] rows;" "delete (row);" "delete ::row;" "if (row) delete row;"; do
    fresh
    put src/shell/Drop.cpp <<<"$expression"
    finds "$expression" src/shell/Drop.cpp:1 "deletes by hand"
done

fresh
put src/shell/Keep.h <<'TEXT'
struct Keep
{
    Keep(const Keep&) = delete;
    Keep& operator=(const Keep&) =delete;
    void operator delete(void* place);
    void Delete(int row); // delete row by row
    const char* text = "delete row";
    void deleteLater();
};
TEXT
passes "the word where it deletes nothing"
finish

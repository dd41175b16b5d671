#include "DropJudgement.h"

#include "DragItem.h"
#include "ReservedFiles.h"

#include <algorithm>
#include <vector>

using namespace Qt::StringLiterals;

namespace
{

using Types = std::vector<QLatin1StringView>;

enum class Targets { Any, AllBut, Only };

/// Whether something of the catalog's own may not be added to.
enum class Guard { None, ReservedFile, CatalogDatabase };

struct Rule {
    Types sources;
    Targets targets;
    Types named;
    /// How many names from the datasource on may not all be those of the source; 0 for no such test.
    int otherWithin;
    Guard guard = Guard::None;
};

const std::vector<Rule>& rules()
{
    static const std::vector<Rule> table = {
        {{"DSN"_L1, "FDSN"_L1}, Targets::Any, {}, 0},
        {{"FI"_L1}, Targets::Any, {}, 1},
        {{"fi"_L1},
         Targets::AllBut,
         {"db"_L1, "TA"_L1, "ta"_L1, "CO"_L1, "co"_L1, "US"_L1, "us"_L1, "DBPRV"_L1, "dbprv"_L1, "TBLPRV"_L1,
          "tblprv"_L1},
         1},
        {{"FD"_L1, "fd"_L1}, Targets::Only, {"fi"_L1, "FD"_L1, "fd"_L1}, 2, Guard::ReservedFile},
        {{"DB"_L1, "db"_L1}, Targets::Any, {}, 1, Guard::CatalogDatabase},
        {{"TA"_L1, "ta"_L1}, Targets::Only, {"db"_L1, "TA"_L1, "ta"_L1, "CO"_L1, "co"_L1}, 2, Guard::CatalogDatabase},
        {{"CO"_L1, "co"_L1}, Targets::Only, {"ta"_L1, "CO"_L1, "co"_L1}, 3, Guard::CatalogDatabase},
        {{"US"_L1, "us"_L1}, Targets::Any, {}, 1},
        {{"DBPRV"_L1, "dbprv"_L1}, Targets::Only, {"db"_L1, "DBPRV"_L1, "dbprv"_L1}, 2},
        {{"TBLPRV"_L1, "tblprv"_L1}, Targets::Only, {"ta"_L1, "CO"_L1, "co"_L1, "TBLPRV"_L1, "tblprv"_L1}, 3},
    };
    return table;
}

bool contains(const Types& types, const QString& type)
{
    return std::find(types.begin(), types.end(), type) != types.end();
}

bool isGuarded(Guard guard, const DragItem& target)
{
    const QString name = target.Keys.value(1);
    switch (guard) {
    case Guard::None:
        return false;
    case Guard::ReservedFile:
        return reservedfiles::isReserved(name);
    case Guard::CatalogDatabase:
        return name == "TW"_L1 && contains({"db"_L1, "TA"_L1, "ta"_L1, "CO"_L1, "co"_L1}, target.NodeType);
    }
    return false;
}

bool isTargetType(const Rule& rule, const QString& type)
{
    switch (rule.targets) {
    case Targets::Any:
        return true;
    case Targets::AllBut:
        return !contains(rule.named, type);
    case Targets::Only:
        return contains(rule.named, type);
    }
    return false;
}

} // namespace

Drop judgeDrop(const DragItem& source, const DragItem& target)
{
    if (source.NodeType == target.NodeType && source.Keys == target.Keys)
        return Drop::OnItself;
    const auto rule = std::find_if(rules().begin(), rules().end(),
                                   [&](const Rule& each) { return contains(each.sources, source.NodeType); });
    if (rule == rules().end() || !isTargetType(*rule, target.NodeType) || isGuarded(rule->guard, target))
        return Drop::Refused;
    const bool sameSide =
        rule->otherWithin > 0 && source.Keys.mid(0, rule->otherWithin) == target.Keys.mid(0, rule->otherWithin);
    return sameSide ? Drop::Refused : Drop::Allowed;
}

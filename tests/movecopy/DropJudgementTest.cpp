#include "DropJudgement.h"

#include "DragItem.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

using namespace Qt::StringLiterals;

namespace
{

using Names = std::set<QString>;

/// How many names an item of each type has on its path.
const std::map<QString, int> parts{{u"DSN"_s, 1}, {u"FDSN"_s, 1}, {u"FI"_s, 1},     {u"DB"_s, 1},    {u"US"_s, 1},
                                   {u"fi"_s, 2},  {u"FD"_s, 2},   {u"db"_s, 2},     {u"TA"_s, 2},    {u"DBPRV"_s, 2},
                                   {u"us"_s, 2},  {u"fd"_s, 3},   {u"ta"_s, 3},     {u"CO"_s, 3},    {u"SCO"_s, 3},
                                   {u"sco"_s, 4}, {u"co"_s, 4},   {u"TBLPRV"_s, 3}, {u"dbprv"_s, 3}, {u"tblprv"_s, 4}};

const Names everything = [] {
    Names all;
    for (const auto& [type, count] : parts)
        all.insert(type);
    return all;
}();

Names without(Names names, const Names& others)
{
    for (const QString& name : others)
        names.erase(name);
    return names;
}

/// Where an item of each type may go, the names on the paths aside.
const std::map<QString, Names> targets = [] {
    const Names intoFile{u"fi"_s, u"FD"_s, u"fd"_s};
    const Names intoDatabase{u"db"_s, u"TA"_s, u"ta"_s, u"CO"_s, u"co"_s};
    const Names intoTable{u"ta"_s, u"CO"_s, u"co"_s};
    const Names ofDatabase{u"db"_s, u"DBPRV"_s, u"dbprv"_s};
    const Names ofTable{u"ta"_s, u"CO"_s, u"co"_s, u"TBLPRV"_s, u"tblprv"_s};
    const Names noFile{u"db"_s, u"TA"_s,    u"ta"_s,    u"CO"_s,     u"co"_s,    u"US"_s,
                       u"us"_s, u"DBPRV"_s, u"dbprv"_s, u"TBLPRV"_s, u"tblprv"_s};
    return std::map<QString, Names>{{u"DSN"_s, everything},   {u"FDSN"_s, everything},
                                    {u"FI"_s, everything},    {u"fi"_s, without(everything, noFile)},
                                    {u"FD"_s, intoFile},      {u"fd"_s, intoFile},
                                    {u"DB"_s, everything},    {u"db"_s, everything},
                                    {u"TA"_s, intoDatabase},  {u"ta"_s, intoDatabase},
                                    {u"CO"_s, intoTable},     {u"co"_s, intoTable},
                                    {u"SCO"_s, {}},           {u"sco"_s, {}},
                                    {u"US"_s, everything},    {u"us"_s, everything},
                                    {u"DBPRV"_s, ofDatabase}, {u"dbprv"_s, ofDatabase},
                                    {u"TBLPRV"_s, ofTable},   {u"tblprv"_s, ofTable}};
}();

/// The level of whose names one at least must differ: 0 datasource, 1 file or database, 2 table; none below 0.
int levelOf(const QString& source)
{
    static const std::map<QString, int> levels{{u"DSN"_s, -1},  {u"FDSN"_s, -1}, {u"FI"_s, 0},     {u"fi"_s, 0},
                                               {u"FD"_s, 1},    {u"fd"_s, 1},    {u"DB"_s, 0},     {u"db"_s, 0},
                                               {u"TA"_s, 1},    {u"ta"_s, 1},    {u"CO"_s, 2},     {u"co"_s, 2},
                                               {u"SCO"_s, -1},  {u"sco"_s, -1},  {u"US"_s, 0},     {u"us"_s, 0},
                                               {u"DBPRV"_s, 1}, {u"dbprv"_s, 1}, {u"TBLPRV"_s, 2}, {u"tblprv"_s, 2}};
    return levels.at(source);
}

DragItem item(const QString& type, const QStringList& names)
{
    DragItem made;
    made.Node = u"node"_s;
    made.NodeType = type;
    made.Keys = names.first(parts.at(type));
    return made;
}

const QStringList reservedFiles{u"CNTRL"_s, u"COLUMN"_s, u"DB"_s,    u"DBPRV"_s, u"DRIVER"_s, u"FIELD"_s, u"FILE"_s,
                                u"KEY"_s,   u"LOCDT"_s,  u"SQLDT"_s, u"TABLE"_s, u"TBLPRV"_s, u"USER"_s};

/// What should come of a drop, told from the tables above.
Drop expected(const DragItem& source, const DragItem& target)
{
    if (source.NodeType == target.NodeType && source.Keys == target.Keys)
        return Drop::OnItself;
    if (!targets.at(source.NodeType).contains(target.NodeType))
        return Drop::Refused;
    const QString kind = source.NodeType.toUpper();
    if (kind == u"FD"_s && reservedFiles.contains(target.Keys.at(1)))
        return Drop::Refused;
    static const Names ofDatabase{u"db"_s, u"TA"_s, u"ta"_s, u"CO"_s, u"co"_s};
    if ((kind == u"DB"_s || kind == u"TA"_s || kind == u"CO"_s) && ofDatabase.contains(target.NodeType) &&
        target.Keys.at(1) == u"TW"_s)
        return Drop::Refused;
    const int level = levelOf(source.NodeType);
    if (level < 0)
        return Drop::Allowed;
    for (int i = 0; i <= level; ++i) {
        if (source.Keys.value(i) != target.Keys.value(i))
            return Drop::Allowed;
    }
    return Drop::Refused;
}

const std::vector<QStringList>& paths()
{
    static const std::vector<QStringList> all = [] {
        std::vector<QStringList> made;
        QStringList second{u"SALES"_s, u"sales"_s, u"TW"_s, u""_s, u"tw"_s};
        second += reservedFiles;
        for (const QString& first : {u"Here"_s, u"There"_s, u"here"_s}) {
            for (const QString& owner : second) {
                for (const QString& third : {u"ORDERS"_s, u"orders"_s}) {
                    for (const QString& last : {u"AMOUNT"_s, u"BUYER"_s})
                        made.push_back({first, owner, third, last});
                }
            }
        }
        return made;
    }();
    return all;
}

} // namespace

TEST(DropJudgement, HoldsForEveryPairOfTypesAndNames)
{
    const std::vector<QStringList> sources{{u"Here"_s, u"SALES"_s, u"ORDERS"_s, u"AMOUNT"_s},
                                           {u"Here"_s, u"TW"_s, u"ORDERS"_s, u"AMOUNT"_s},
                                           {u"Here"_s, u"KEY"_s, u"ORDERS"_s, u"AMOUNT"_s}};
    std::map<Drop, int> seen;
    for (const auto& [sourceType, sourceParts] : parts) {
        for (const auto& [targetType, targetParts] : parts) {
            for (const QStringList& sourcePath : sources) {
                for (const QStringList& path : paths()) {
                    const DragItem source = item(sourceType, sourcePath);
                    const DragItem target = item(targetType, path);
                    const Drop drop = judgeDrop(source, target);
                    ++seen[drop];
                    ASSERT_EQ(drop, expected(source, target))
                        << sourceType.toStdString() << ' ' << source.Keys.join('/'_L1).toStdString() << " on "
                        << targetType.toStdString() << ' ' << target.Keys.join('/'_L1).toStdString();
                }
            }
        }
    }
    EXPECT_GT(seen[Drop::Allowed], 10000);
    EXPECT_GT(seen[Drop::Refused], 10000);
    EXPECT_GT(seen[Drop::OnItself], 20);
}

TEST(DropJudgement, ANodeOnItselfIsNeitherAllowedNorRefused)
{
    for (const auto& [type, count] : parts) {
        const DragItem one = item(type, {u"Here"_s, u"SALES"_s, u"ORDERS"_s, u"AMOUNT"_s});
        EXPECT_EQ(judgeDrop(one, one), Drop::OnItself) << type.toStdString();
    }
}

TEST(DropJudgement, AFileMayLandOnTheDatabasesOfAnotherDatasource)
{
    const DragItem file = item(u"fi"_s, {u"Here"_s, u"PAYROLL"_s});
    EXPECT_EQ(judgeDrop(file, item(u"DB"_s, {u"There"_s})), Drop::Allowed);
    EXPECT_EQ(judgeDrop(file, item(u"DB"_s, {u"Here"_s})), Drop::Refused);
    EXPECT_EQ(judgeDrop(file, item(u"db"_s, {u"There"_s, u"SALES"_s})), Drop::Refused);
    EXPECT_EQ(judgeDrop(file, item(u"SCO"_s, {u"There"_s, u"SALES"_s, u"ORDERS"_s})), Drop::Allowed);
}

TEST(DropJudgement, ATableMayLandOnAColumnOfAnotherDatabase)
{
    const DragItem table = item(u"ta"_s, {u"Here"_s, u"SALES"_s, u"ORDERS"_s});
    EXPECT_EQ(judgeDrop(table, item(u"co"_s, {u"Here"_s, u"DEPOT"_s, u"PARTS"_s, u"NUMBER"_s})), Drop::Allowed);
    EXPECT_EQ(judgeDrop(table, item(u"co"_s, {u"Here"_s, u"SALES"_s, u"PARTS"_s, u"NUMBER"_s})), Drop::Refused);
}

TEST(DropJudgement, AFieldIsRefusedByTheCatalogsOwnFilesInAnyDatasource)
{
    const DragItem field = item(u"fd"_s, {u"Here"_s, u"PAYROLL"_s, u"SALARY"_s});
    for (const QString& file : reservedFiles) {
        EXPECT_EQ(judgeDrop(field, item(u"fi"_s, {u"Here"_s, file})), Drop::Refused) << file.toStdString();
        EXPECT_EQ(judgeDrop(field, item(u"FD"_s, {u"There"_s, file})), Drop::Refused) << file.toStdString();
        EXPECT_EQ(judgeDrop(field, item(u"fd"_s, {u"There"_s, file, u"X"_s})), Drop::Refused) << file.toStdString();
    }
    EXPECT_EQ(judgeDrop(field, item(u"fi"_s, {u"Here"_s, u"KEYS"_s})), Drop::Allowed);
    EXPECT_EQ(judgeDrop(field, item(u"fi"_s, {u"Here"_s, u"key"_s})), Drop::Allowed);
}

TEST(DropJudgement, NamesThatDifferInCaseAreDifferentDatabases)
{
    const DragItem table = item(u"ta"_s, {u"Here"_s, u"SALES"_s, u"ORDERS"_s});
    EXPECT_EQ(judgeDrop(table, item(u"db"_s, {u"Here"_s, u"Sales"_s})), Drop::Allowed);
    EXPECT_EQ(judgeDrop(table, item(u"db"_s, {u"Here"_s, u"SALES"_s})), Drop::Refused);
}

TEST(DropJudgement, ADatasourceIsAllowedAnywhereAndSpecialColumnsNowhere)
{
    for (const auto& [type, count] : parts) {
        const DragItem target = item(type, {u"Here"_s, u"SALES"_s, u"ORDERS"_s, u"AMOUNT"_s});
        EXPECT_EQ(judgeDrop(item(u"DSN"_s, {u"There"_s}), target), Drop::Allowed) << type.toStdString();
        EXPECT_EQ(judgeDrop(item(u"SCO"_s, {u"There"_s, u"SALES"_s, u"ORDERS"_s}), target), Drop::Refused);
        EXPECT_EQ(judgeDrop(item(u"sco"_s, {u"There"_s, u"SALES"_s, u"ORDERS"_s, u"RFA"_s}), target), Drop::Refused);
    }
}

TEST(DropJudgement, AnUnknownTypeIsRefused)
{
    DragItem unknown;
    unknown.NodeType = u"other"_s;
    unknown.Keys = QStringList{u"There"_s};
    EXPECT_EQ(judgeDrop(unknown, item(u"FI"_s, {u"Here"_s})), Drop::Refused);
}

#include "NodeKeys.h"

#include "NodeTypes.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace
{

/// The types of the items on the way to an item.
const QStringList& pathOf(const QString& item)
{
    static const QHash<QString, QStringList> paths{
        {u"fi"_s, {u"fi"_s}},
        {u"fd"_s, {u"fi"_s, u"fd"_s}},
        {u"db"_s, {u"db"_s}},
        {u"ta"_s, {u"db"_s, u"ta"_s}},
        {u"co"_s, {u"db"_s, u"ta"_s, u"co"_s}},
        {u"us"_s, {u"us"_s}},
        {u"dbprv"_s, {u"db"_s, u"dbprv"_s}},
        {u"tblprv"_s, {u"db"_s, u"ta"_s, u"tblprv"_s}},
    };
    return *paths.constFind(item);
}

QString part(const QString& type, const QString& name)
{
    return type + '='_L1 + name + ':'_L1;
}

} // namespace

QString nodekeys::of(const QString& type, const QStringList& names)
{
    QString key = nodetypes::datasourceKey(names.value(0));
    const QStringList& path = pathOf(type.toLower());
    for (qsizetype i = 0; i < path.size(); ++i) {
        // A collection has the name of its owner.
        key += part(path.at(i).toUpper(), names.value(i));
        if (i + 1 < path.size() || nodetypes::isItem(type))
            key += part(path.at(i), names.value(i + 1));
    }
    return key;
}

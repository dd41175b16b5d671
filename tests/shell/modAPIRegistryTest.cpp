#include "modAPIRegistry.h"

#include "Settings.h"
#include "TemporarySettings.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using modAPIRegistry::GetKeyValue;
using modAPIRegistry::Root;
using modAPIRegistry::ValueText;
using modAPIRegistry::ValueType;

namespace
{

const QString toolsKey = u"SOFTWARE\\Maker\\Shared Tools"_s;

class Registry : public testing::Test
{
protected:
    static void set(const QString& name, const QString& value)
    {
        settings::save(u"HKEY_LOCAL_MACHINE/"_s + QString(toolsKey).replace(u'\\', u'/'), name, value);
    }

    TemporarySettings folder;
    QString value = u"before"_s;
};

} // namespace

TEST(RegistryValue, ATextLosesItsTrailingNul)
{
    EXPECT_EQ(ValueText(ValueType::String, QByteArray("path\0", 5)), u"path"_s);
}

TEST(RegistryValue, ATextWithoutATrailingNulIsTakenWhole)
{
    EXPECT_EQ(ValueText(ValueType::String, "path"), u"path"_s);
}

TEST(RegistryValue, ATextLosesOneTrailingNulOnly)
{
    EXPECT_EQ(ValueText(ValueType::String, QByteArray("ab\0\0", 4)), QString("ab\0"_L1));
}

TEST(RegistryValue, BytesAreHexadecimalWithTheLastByteFirst)
{
    EXPECT_EQ(ValueText(ValueType::Binary, QByteArray("\x01\x02\xab\x0f", 4)), u"&H0FAB0201"_s);
    EXPECT_EQ(ValueText(ValueType::Binary, QByteArray("\0", 1)), u"&H00"_s);
    EXPECT_EQ(ValueText(ValueType::Binary, {}), u"&H"_s);
}

TEST(RegistryValue, MoreThanTheBufferHoldsIsNotRead)
{
    for (const ValueType type : {ValueType::String, ValueType::Binary}) {
        EXPECT_TRUE(ValueText(type, QByteArray(1024, 'x')).has_value());
        EXPECT_FALSE(ValueText(type, QByteArray(1025, 'x')).has_value());
    }
}

TEST_F(Registry, AValueIsFoundByRootKeyAndName)
{
    set(u"PATH"_s, u"/usr/bin/hardware"_s);
    EXPECT_TRUE(GetKeyValue(Root::HKEY_LOCAL_MACHINE, toolsKey, u"PATH"_s, value));
    EXPECT_EQ(value, u"/usr/bin/hardware"_s);
}

TEST_F(Registry, AMissingValueLeavesTheTextAsItWas)
{
    set(u"PATH"_s, u"/usr/bin/hardware"_s);
    EXPECT_FALSE(GetKeyValue(Root::HKEY_LOCAL_MACHINE, toolsKey, u"OTHER"_s, value));
    EXPECT_FALSE(GetKeyValue(Root::HKEY_CURRENT_USER, toolsKey, u"PATH"_s, value));
    EXPECT_FALSE(GetKeyValue(Root::HKEY_LOCAL_MACHINE, toolsKey + u"\\Below"_s, u"PATH"_s, value));
    EXPECT_EQ(value, u"before"_s);
}

TEST_F(Registry, ATextAndItsTrailingNulMustFitTheBuffer)
{
    set(u"FITS"_s, QString(1023, u'x'));
    set(u"TOO LONG"_s, QString(1024, u'x'));
    EXPECT_TRUE(GetKeyValue(Root::HKEY_LOCAL_MACHINE, toolsKey, u"FITS"_s, value));
    EXPECT_EQ(value, QString(1023, u'x'));
    EXPECT_FALSE(GetKeyValue(Root::HKEY_LOCAL_MACHINE, toolsKey, u"TOO LONG"_s, value));
}

TEST_F(Registry, BytesAreReadAsHexadecimal)
{
    set(u"BYTES"_s, u"hex:0a,1b,ff"_s);
    EXPECT_TRUE(GetKeyValue(Root::HKEY_LOCAL_MACHINE, toolsKey, u"BYTES"_s, value));
    EXPECT_EQ(value, u"&HFF1B0A"_s);
}

TEST_F(Registry, AFileWrittenByHandIsRead)
{
    QFile file(settings::fileName());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("[HKEY_LOCAL_MACHINE\\SOFTWARE\\Maker\\Shared Tools]\nPATH=/opt/tools/info\n");
    file.close();
    EXPECT_TRUE(GetKeyValue(Root::HKEY_LOCAL_MACHINE, toolsKey, u"PATH"_s, value));
    EXPECT_EQ(value, u"/opt/tools/info"_s);
}

#include "Findings.h"
#include "FindingsModel.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Findings, The5001stErrorIsTheLastAndSaysSo)
{
    int tooMany = 0;
    Findings findings([&] { ++tooMany; });
    for (int line = 1; line <= 5000; ++line)
        findings.AddError(line, u"?"_s, u"wrong"_s);
    EXPECT_EQ(findings.errors(), 5000);
    EXPECT_EQ(findings.all().size(), 5000U);
    EXPECT_EQ(tooMany, 0);

    findings.AddError(5001, u"COLUMN"_s, u"wrong"_s);
    EXPECT_EQ(findings.errors(), 5001);
    ASSERT_EQ(findings.all().size(), 5002U);
    const Finding& last = findings.all().back();
    EXPECT_EQ(last.line, 5001);
    EXPECT_EQ(last.severity, Finding::Severity::Stopped);
    EXPECT_EQ(last.type, u"?"_s);
    EXPECT_EQ(last.description, u"Stopped validating after 5001 errors"_s);
    EXPECT_EQ(tooMany, 1);

    findings.AddError(5001, u"COLUMN"_s, u"wrong too"_s);
    EXPECT_EQ(findings.errors(), 5001);
    EXPECT_EQ(findings.all().size(), 5002U);
    EXPECT_EQ(tooMany, 1);
}

TEST(Findings, WarningsCountTowardsNoLimit)
{
    Findings findings([] { FAIL(); });
    for (int line = 1; line <= 6000; ++line)
        findings.AddWarning(line, u"USER"_s, u"odd"_s);
    findings.AddError(6001, u"?"_s, u"wrong"_s);
    EXPECT_EQ(findings.warnings(), 6000);
    EXPECT_EQ(findings.errors(), 1);
    EXPECT_EQ(findings.all().size(), 6001U);
}

TEST(Findings, ClearedOnesCountAnew)
{
    int tooMany = 0;
    Findings findings([&] { ++tooMany; });
    for (int run = 1; run <= 2; ++run) {
        findings.clear();
        EXPECT_EQ(findings.errors(), 0);
        EXPECT_TRUE(findings.all().empty());
        for (int line = 1; line <= 5001; ++line)
            findings.AddError(line, u"?"_s, u"wrong"_s);
        EXPECT_EQ(findings.all().size(), 5002U);
        EXPECT_EQ(tooMany, run);
    }
}

TEST(Findings, ALinePassedLeavesNothing)
{
    Findings findings;
    findings.AddPassed(1, u"FILE"_s, u"fine"_s);
    EXPECT_TRUE(findings.all().empty());
}

TEST(FindingsModel, OnlyATextThatNoOneCouldReadIsCutOff)
{
    EXPECT_EQ(beginningOf(QString(2000, 'x')), QString(2000, 'x'));
    EXPECT_EQ(beginningOf(QString(2001, 'x')), QString(2000, 'x') + u'\u2026');
    EXPECT_EQ(beginningOf({}), QString());
}

#include "Application.h"

#include <QRegularExpression>
#include <QUrl>

#include <gtest/gtest.h>

TEST(Application, TheVersionIsItsThreeNumbers)
{
    EXPECT_EQ(application::title(), "Tarnwick Quorvane");
    EXPECT_EQ(application::version(), QString::number(application::major()) + '.' +
                                          QString::number(application::minor()) + '.' +
                                          QString::number(application::revision()));
    EXPECT_EQ(application::isBeta(), application::major() == 0);
}

TEST(Application, ContactDetailsBelongToNobody)
{
    const QUrl web(application::supportWeb());
    EXPECT_TRUE(web.isValid());
    EXPECT_EQ(web.scheme(), "https");
    EXPECT_TRUE(web.host().endsWith(".example"));
    EXPECT_TRUE(application::supportMail().endsWith(".example"));

    const QRegularExpression reserved("^\\+44 20 7946 0\\d{3}$");
    for (const QString& number : {application::telephone(), application::facsimile(), application::voiceMail()})
        EXPECT_TRUE(reserved.match(number).hasMatch()) << number.toStdString();
    EXPECT_FALSE(application::headOffice().isEmpty());
}

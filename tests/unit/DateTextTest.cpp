#include <gtest/gtest.h>

#include <QLocale>

#include "core/Texts.h"

namespace kuvo {
namespace {

// Every date text the program writes reads back as the same date, whatever the
// machine's regional settings.
class DateTextTest : public ::testing::TestWithParam<const char*> {
 protected:
  void SetUp() override { saved_ = Regional(); }
  void TearDown() override { SetRegional(saved_); }

 private:
  QLocale saved_;
};

const QDate kDates[] = {QDate(2000, 3, 4),   QDate(1999, 12, 31), QDate(2024, 2, 29),
                        QDate(2026, 11, 23), QDate(2008, 10, 6),  QDate(2012, 1, 1),
                        QDate(2015, 5, 13),  QDate(2019, 6, 30),  QDate(2021, 7, 14),
                        QDate(2023, 8, 15),  QDate(2003, 9, 9),   QDate(1976, 4, 25)};

void ExpectRoundTrips(const QString& name) {
  for (const QDate& date : kDates) {
    const QString shortText = ShortDate(date);
    EXPECT_TRUE(IsDateText(shortText)) << name.toStdString() << " " << shortText.toStdString();
    EXPECT_EQ(DateFromText(shortText), date)
        << name.toStdString() << " " << shortText.toStdString();
    const QString longText = FormatDate(date, QStringLiteral("dd mmmm yyyy"));
    EXPECT_TRUE(IsDateText(longText)) << name.toStdString() << " " << longText.toStdString();
    EXPECT_EQ(DateFromText(longText), date) << name.toStdString() << " " << longText.toStdString();
    // The texts that go into statements are plain digits everywhere.
    EXPECT_EQ(FormatDate(date, QStringLiteral("mm dd yy")),
              date.toString(QStringLiteral("MM dd yy")))
        << name.toStdString();
    EXPECT_EQ(FormatDate(date, QStringLiteral("dd mm yy")),
              date.toString(QStringLiteral("dd MM yy")))
        << name.toStdString();
  }
}

TEST_P(DateTextTest, EveryDateTextReadsBack) {
  const QString name = QString::fromLatin1(GetParam());
  SetRegional(QLocale(name));
  ExpectRoundTrips(name);
}

INSTANTIATE_TEST_SUITE_P(Locales, DateTextTest,
                         ::testing::Values("fr_FR", "en_US", "de_DE", "C", "en_CA", "ja_JP",
                                           "hu_HU", "bg_BG", "ar_EG", "ru_RU", "fa_IR"),
                         [](const auto& info) { return std::string(info.param); });

TEST(DateText, ShortDateInTheCLocaleHasTheMonthsName) {
  const QLocale saved = Regional();
  SetRegional(QLocale::c());
  EXPECT_EQ(ShortDate(QDate(2026, 11, 23)), QStringLiteral("23 Nov 2026"));
  EXPECT_EQ(DateFromText(QStringLiteral("23 Nov 2026")), QDate(2026, 11, 23));
  EXPECT_EQ(DateFromText(QStringLiteral("23 November 2026")), QDate(2026, 11, 23));
  // Numbers still read day first, as the import writes them.
  EXPECT_EQ(DateFromText(QStringLiteral("04/03/2000")), QDate(2000, 3, 4));
  SetRegional(saved);
}

TEST(DateText, MonthFirstLocaleReadsItsOwnTextsMonthFirst) {
  const QLocale saved = Regional();
  SetRegional(QLocale(QLocale::English, QLocale::UnitedStates));
  EXPECT_EQ(ShortDate(QDate(2000, 3, 4)), QStringLiteral("3/4/2000"));
  EXPECT_EQ(DateFromText(QStringLiteral("3/4/2000")), QDate(2000, 3, 4));
  EXPECT_EQ(FormatDate(QDate(2000, 3, 4), QStringLiteral("dd mmmm yyyy")),
            QStringLiteral("04 March 2000"));
  EXPECT_EQ(DateFromText(QStringLiteral("04 March 2000")), QDate(2000, 3, 4));
  SetRegional(saved);
}

TEST(DateText, FrenchMonthNamesReadBack) {
  const QLocale saved = Regional();
  SetRegional(QLocale(QLocale::French, QLocale::France));
  EXPECT_EQ(DateFromText(QStringLiteral("04 mars 2000")), QDate(2000, 3, 4));
  EXPECT_EQ(DateFromText(QStringLiteral("15 février 2001")), QDate(2001, 2, 15));
  EXPECT_EQ(DateFromText(QStringLiteral("01 décembre 2001")), QDate(2001, 12, 1));
  EXPECT_FALSE(IsDateText(QStringLiteral("31 février 2001")));
  EXPECT_FALSE(IsDateText(QStringLiteral("04 mars")));
  SetRegional(saved);
}

// Every locale the platform knows: the short date and the long form with the
// month's name read back as the date they were made from.
TEST(DateText, EveryLocaleOfThePlatform) {
  const QLocale saved = Regional();
  int locales = 0;
  QStringList failing;
  for (const QLocale& locale :
       QLocale::matchingLocales(QLocale::AnyLanguage, QLocale::AnyScript, QLocale::AnyCountry)) {
    SetRegional(locale);
    ++locales;
    for (const QDate& date : kDates) {
      const QString texts[] = {ShortDate(date), FormatDate(date, QStringLiteral("dd mmmm yyyy"))};
      for (const QString& text : texts) {
        QDate back;
        if (IsDateText(text)) back = DateFromText(text);
        if (back != date) failing << locale.name() + QStringLiteral(": ") + text;
      }
    }
  }
  SetRegional(saved);
  EXPECT_GT(locales, 100);
  EXPECT_TRUE(failing.isEmpty()) << failing.size() << " texts, first: "
                                 << failing.mid(0, 20).join(QStringLiteral(" | ")).toStdString();
}

}  // namespace
}  // namespace kuvo

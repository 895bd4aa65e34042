#include <gtest/gtest.h>

#include "core/Texts.h"

namespace kuvo {
namespace {

const QLocale kFrench(QLocale::French, QLocale::France);
const QLocale kEnglish(QLocale::English, QLocale::UnitedStates);

// Every test starts in French and leaves the regional settings as it found them.
class TextsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    saved_ = Regional();
    SetRegional(kFrench);
  }
  void TearDown() override { SetRegional(saved_); }

 private:
  QLocale saved_;
};

// The number of the error `action` raises, or 0 when it raises none.
template <typename Action>
int ErrorOf(Action action) {
  try {
    action();
  } catch (const VbError& error) {
    return error.Number();
  }
  return 0;
}

// --- Regional settings -------------------------------------------------------

TEST(TextsRegionalTest, DefaultsToFrench) {
  // Tests that change the regional settings put them back, so the default holds here.
  EXPECT_EQ(Regional().language(), QLocale::French);
  EXPECT_EQ(Regional().territory(), QLocale::France);
}

TEST_F(TextsTest, SetRegionalChangesTheSettings) {
  SetRegional(kEnglish);
  EXPECT_EQ(Regional().language(), QLocale::English);
  SetRegional(kFrench);
  EXPECT_EQ(Regional().language(), QLocale::French);
}

// --- Val -----------------------------------------------------------------------

TEST_F(TextsTest, ValOfNonNumbersIsZero) {
  EXPECT_EQ(Val(QStringLiteral("?")), 0.0);
  EXPECT_EQ(Val(QString()), 0.0);
  EXPECT_EQ(Val(QStringLiteral("")), 0.0);
  EXPECT_EQ(Val(QStringLiteral("Label3")), 0.0);
  EXPECT_EQ(Val(QStringLiteral(".")), 0.0);
  EXPECT_EQ(Val(QStringLiteral("-")), 0.0);
}

TEST_F(TextsTest, ValReadsTheLeadingNumber) {
  EXPECT_EQ(Val(QStringLiteral("12abc")), 12.0);
  EXPECT_EQ(Val(QStringLiteral("12")), 12.0);
  EXPECT_EQ(Val(QStringLiteral("2.6")), 2.6);
  EXPECT_EQ(Val(QStringLiteral("2,6")), 2.0);
  EXPECT_EQ(Val(QStringLiteral(".5")), 0.5);
  EXPECT_EQ(Val(QStringLiteral("7.")), 7.0);
  EXPECT_EQ(Val(QStringLiteral("1.2.3")), 1.2);
}

TEST_F(TextsTest, ValSkipsBlanksTabsAndLineFeeds) {
  EXPECT_EQ(Val(QStringLiteral(" 12")), 12.0);
  EXPECT_EQ(Val(QStringLiteral("\t12 ")), 12.0);
  EXPECT_EQ(Val(QStringLiteral("1 2 3")), 123.0);
  EXPECT_EQ(Val(QStringLiteral("\n4\n5")), 45.0);
  EXPECT_EQ(Val(QStringLiteral(" - 5")), -5.0);
}

TEST_F(TextsTest, ValSign) {
  EXPECT_EQ(Val(QStringLiteral("-12.5")), -12.5);
  EXPECT_EQ(Val(QStringLiteral("+3")), 3.0);
  EXPECT_EQ(Val(QStringLiteral("--3")), 0.0);
}

TEST_F(TextsTest, ValExponent) {
  EXPECT_EQ(Val(QStringLiteral("1E3")), 1000.0);
  EXPECT_EQ(Val(QStringLiteral("1.5e2")), 150.0);
  EXPECT_EQ(Val(QStringLiteral("25D-1")), 2.5);
  EXPECT_EQ(Val(QStringLiteral("3E")), 3.0);
  EXPECT_EQ(Val(QStringLiteral("3Ex")), 3.0);
  EXPECT_EQ(Val(QStringLiteral("1e-400")), 0.0);
  EXPECT_EQ(ErrorOf([] { Val(QStringLiteral("1e400")); }), 6);
}

TEST_F(TextsTest, ValHexAndOctal) {
  EXPECT_EQ(Val(QStringLiteral("&H1F")), 31.0);
  EXPECT_EQ(Val(QStringLiteral("&h1f")), 31.0);
  EXPECT_EQ(Val(QStringLiteral("&HFFFF")), -1.0);
  EXPECT_EQ(Val(QStringLiteral("&HFFFF&")), 65535.0);
  EXPECT_EQ(Val(QStringLiteral("&H10000")), 65536.0);
  EXPECT_EQ(Val(QStringLiteral("&O17")), 15.0);
  EXPECT_EQ(Val(QStringLiteral("&17")), 15.0);
  EXPECT_EQ(Val(QStringLiteral("&H")), 0.0);
  EXPECT_EQ(Val(QStringLiteral("&H1G")), 1.0);
}

TEST_F(TextsTest, ValIgnoresTheRegionalSeparator) {
  EXPECT_EQ(Val(QStringLiteral("2.6")), 2.6);
  SetRegional(kEnglish);
  EXPECT_EQ(Val(QStringLiteral("2,6")), 2.0);
}

// --- Str -------------------------------------------------------------------------

TEST_F(TextsTest, StrOfIntegers) {
  EXPECT_EQ(Str(1234), QStringLiteral(" 1234"));
  EXPECT_EQ(Str(-2), QStringLiteral("-2"));
  EXPECT_EQ(Str(0), QStringLiteral(" 0"));
  EXPECT_EQ(Str(-0.0), QStringLiteral(" 0"));
  EXPECT_EQ(Str(100), QStringLiteral(" 100"));
}

TEST_F(TextsTest, StrOfFractions) {
  EXPECT_EQ(Str(0.5), QStringLiteral(" .5"));
  EXPECT_EQ(Str(12.3), QStringLiteral(" 12.3"));
  EXPECT_EQ(Str(-0.5), QStringLiteral("-.5"));
  EXPECT_EQ(Str(-12.75), QStringLiteral("-12.75"));
  EXPECT_EQ(Str(1.0 / 3.0), QStringLiteral(" .333333333333333"));
  EXPECT_EQ(Str(2.0 / 3.0), QStringLiteral(" .666666666666667"));
  EXPECT_EQ(Str(0.1 + 0.2), QStringLiteral(" .3"));
}

TEST_F(TextsTest, StrUsesThePointWhateverTheLocale) {
  SetRegional(kFrench);
  EXPECT_EQ(Str(2.5), QStringLiteral(" 2.5"));
  SetRegional(kEnglish);
  EXPECT_EQ(Str(2.5), QStringLiteral(" 2.5"));
}

TEST_F(TextsTest, StrOfLargeAndSmallValues) {
  EXPECT_EQ(Str(123456789012345.0), QStringLiteral(" 123456789012345"));
  EXPECT_EQ(Str(1e15), QStringLiteral(" 1E+15"));
  EXPECT_EQ(Str(1e16), QStringLiteral(" 1E+16"));
  EXPECT_EQ(Str(-2.5e20), QStringLiteral("-2.5E+20"));
  EXPECT_EQ(Str(0.0001), QStringLiteral(" .0001"));
  EXPECT_EQ(Str(0.00001), QStringLiteral(" 1E-05"));
  EXPECT_EQ(Str(-1.5e-7), QStringLiteral("-1.5E-07"));
}

// --- NumText ---------------------------------------------------------------------

TEST_F(TextsTest, NumTextFrench) {
  EXPECT_EQ(NumText(12.3), QStringLiteral("12,3"));
  EXPECT_EQ(NumText(12), QStringLiteral("12"));
  EXPECT_EQ(NumText(0.5), QStringLiteral("0,5"));
  EXPECT_EQ(NumText(0), QStringLiteral("0"));
  EXPECT_EQ(NumText(-0.0), QStringLiteral("0"));
  EXPECT_EQ(NumText(-1.25), QStringLiteral("-1,25"));
  EXPECT_EQ(NumText(100), QStringLiteral("100"));
  EXPECT_EQ(NumText(33.333333333333336), QStringLiteral("33,3333333333333"));
  EXPECT_EQ(NumText(-0.5), QStringLiteral("-0,5"));
}

TEST_F(TextsTest, NumTextHasNoGroupSeparator) {
  EXPECT_EQ(NumText(1234567), QStringLiteral("1234567"));
  EXPECT_EQ(NumText(1234567.5), QStringLiteral("1234567,5"));
  SetRegional(kEnglish);
  EXPECT_EQ(NumText(1234567.5), QStringLiteral("1234567.5"));
}

TEST_F(TextsTest, NumTextLargeValues) {
  EXPECT_EQ(NumText(123456789012345.0), QStringLiteral("123456789012345"));
  EXPECT_EQ(NumText(1e16), QStringLiteral("1E+16"));
  EXPECT_EQ(NumText(1.5e-5), QStringLiteral("1,5E-05"));
}

// --- FormatNumber ----------------------------------------------------------------

TEST_F(TextsTest, FormatNumberOneDecimal) {
  const QString mask = QStringLiteral("##.#");
  EXPECT_EQ(FormatNumber(12.34, mask), QStringLiteral("12,3"));
  EXPECT_EQ(FormatNumber(12, mask), QStringLiteral("12,"));
  EXPECT_EQ(FormatNumber(0.46, mask), QStringLiteral(",5"));
  EXPECT_EQ(FormatNumber(0, mask), QStringLiteral(","));
  EXPECT_EQ(FormatNumber(0.04, mask), QStringLiteral(","));
  EXPECT_EQ(FormatNumber(100, mask), QStringLiteral("100,"));
  EXPECT_EQ(FormatNumber(12345.67, mask), QStringLiteral("12345,7"));
}

TEST_F(TextsTest, FormatNumberRoundsHalfAwayFromZero) {
  const QString mask = QStringLiteral("##.#");
  EXPECT_EQ(FormatNumber(0.05, mask), QStringLiteral(",1"));
  EXPECT_EQ(FormatNumber(12.25, mask), QStringLiteral("12,3"));
  EXPECT_EQ(FormatNumber(12.35, mask), QStringLiteral("12,4"));
  EXPECT_EQ(FormatNumber(0.15, mask), QStringLiteral(",2"));
  EXPECT_EQ(FormatNumber(9.96, mask), QStringLiteral("10,"));
  EXPECT_EQ(FormatNumber(99.95, mask), QStringLiteral("100,"));
  EXPECT_EQ(FormatNumber(-12.25, mask), QStringLiteral("-12,3"));
  // 1.005 is stored a little below 1.005; the decimal text rounds up all the same.
  EXPECT_EQ(FormatNumber(1.005, QStringLiteral("##.##")), QStringLiteral("1,01"));
  EXPECT_EQ(FormatNumber(2.675, QStringLiteral("##.##")), QStringLiteral("2,68"));
}

TEST_F(TextsTest, FormatNumberTwoDecimals) {
  const QString mask = QStringLiteral("##.##");
  EXPECT_EQ(FormatNumber(12.345, mask), QStringLiteral("12,35"));
  EXPECT_EQ(FormatNumber(7.5, mask), QStringLiteral("7,5"));
  EXPECT_EQ(FormatNumber(7, mask), QStringLiteral("7,"));
  EXPECT_EQ(FormatNumber(0.005, mask), QStringLiteral(",01"));
  EXPECT_EQ(FormatNumber(0.004, mask), QStringLiteral(","));
  EXPECT_EQ(FormatNumber(3.10, mask), QStringLiteral("3,1"));
  EXPECT_EQ(FormatNumber(33.333333333333336, mask), QStringLiteral("33,33"));
}

TEST_F(TextsTest, FormatNumberZeroPlaces) {
  EXPECT_EQ(FormatNumber(0.46, QStringLiteral("0.0")), QStringLiteral("0,5"));
  EXPECT_EQ(FormatNumber(0, QStringLiteral("0.0")), QStringLiteral("0,0"));
  EXPECT_EQ(FormatNumber(12, QStringLiteral("0.00")), QStringLiteral("12,00"));
  EXPECT_EQ(FormatNumber(7.5, QStringLiteral("#0.0#")), QStringLiteral("7,5"));
  EXPECT_EQ(FormatNumber(7, QStringLiteral("#0.0#")), QStringLiteral("7,0"));
  EXPECT_EQ(FormatNumber(5, QStringLiteral("000.#")), QStringLiteral("005,"));
}

TEST_F(TextsTest, FormatNumberNegative) {
  const QString mask = QStringLiteral("##.#");
  EXPECT_EQ(FormatNumber(-12.3, mask), QStringLiteral("-12,3"));
  EXPECT_EQ(FormatNumber(-0.46, mask), QStringLiteral("-,5"));
  EXPECT_EQ(FormatNumber(-0.04, mask), QStringLiteral("-,"));
}

TEST_F(TextsTest, FormatNumberWithoutSeparator) {
  EXPECT_EQ(FormatNumber(12.5, QStringLiteral("##")), QStringLiteral("13"));
  EXPECT_EQ(FormatNumber(0.4, QStringLiteral("##")), QStringLiteral(""));
  EXPECT_EQ(FormatNumber(0.4, QStringLiteral("0")), QStringLiteral("0"));
}

TEST_F(TextsTest, FormatNumberEnglish) {
  SetRegional(kEnglish);
  EXPECT_EQ(FormatNumber(12.34, QStringLiteral("##.#")), QStringLiteral("12.3"));
  EXPECT_EQ(FormatNumber(12, QStringLiteral("##.#")), QStringLiteral("12."));
  EXPECT_EQ(FormatNumber(1234.5, QStringLiteral("##.##")), QStringLiteral("1234.5"));
}

// --- FormatDate ------------------------------------------------------------------

TEST_F(TextsTest, FormatDateFrench) {
  const QDate date(2000, 3, 4);
  EXPECT_EQ(FormatDate(date, QStringLiteral("dd mmmm yyyy")), QStringLiteral("04 mars 2000"));
  EXPECT_EQ(FormatDate(date, QStringLiteral("mm dd yy")), QStringLiteral("03 04 00"));
  EXPECT_EQ(FormatDate(date, QStringLiteral("dd mm yy")), QStringLiteral("04 03 00"));
  EXPECT_EQ(FormatDate(date, QStringLiteral("d/m/yyyy")), QStringLiteral("4/3/2000"));
  EXPECT_EQ(FormatDate(date, QStringLiteral("dd/mm/yyyy")), QStringLiteral("04/03/2000"));
}

TEST_F(TextsTest, FormatDateMonthNames) {
  EXPECT_EQ(FormatDate(QDate(2001, 2, 15), QStringLiteral("mmmm")), QStringLiteral("février"));
  EXPECT_EQ(FormatDate(QDate(2001, 12, 1), QStringLiteral("mmmm")), QStringLiteral("décembre"));
  EXPECT_EQ(FormatDate(QDate(2001, 8, 1), QStringLiteral("d mmmm yyyy")),
            QStringLiteral("1 août 2001"));
  EXPECT_EQ(FormatDate(QDate(2001, 2, 15), QStringLiteral("mmm")), QStringLiteral("févr."));
  EXPECT_EQ(FormatDate(QDate(2001, 3, 15), QStringLiteral("mmm")), QStringLiteral("mars"));
}

TEST_F(TextsTest, FormatDateOtherTokens) {
  const QDate date(2000, 3, 4);  // a Saturday
  EXPECT_EQ(FormatDate(date, QStringLiteral("dddd")), QStringLiteral("samedi"));
  EXPECT_EQ(FormatDate(date, QStringLiteral("DD MM YYYY")), QStringLiteral("04 03 2000"));
  EXPECT_EQ(FormatDate(date, QStringLiteral("y")), QStringLiteral("64"));
  EXPECT_EQ(FormatDate(date, QStringLiteral("q")), QStringLiteral("1"));
  EXPECT_EQ(FormatDate(date, QStringLiteral("ddddd")), QStringLiteral("04/03/2000"));
  EXPECT_EQ(FormatDate(QDate(2009, 11, 30), QStringLiteral("yy-mm-dd")),
            QStringLiteral("09-11-30"));
}

TEST_F(TextsTest, FormatDateCopiesOtherCharacters) {
  const QDate date(2000, 3, 4);
  EXPECT_EQ(FormatDate(date, QStringLiteral("[dd] - (yyyy)")), QStringLiteral("[04] - (2000)"));
  EXPECT_EQ(FormatDate(date, QStringLiteral("\"le\" dd")), QStringLiteral("le 04"));
  EXPECT_EQ(FormatDate(date, QStringLiteral("\\d dd")), QStringLiteral("d 04"));
}

TEST_F(TextsTest, FormatDateEnglish) {
  SetRegional(kEnglish);
  EXPECT_EQ(FormatDate(QDate(2000, 3, 4), QStringLiteral("dd mmmm yyyy")),
            QStringLiteral("04 March 2000"));
}

// --- ShortDate and DateFromText --------------------------------------------------

TEST_F(TextsTest, ShortDateFrench) {
  EXPECT_EQ(ShortDate(QDate(2000, 3, 4)), QStringLiteral("04/03/2000"));
  EXPECT_EQ(ShortDate(QDate(1999, 12, 31)), QStringLiteral("31/12/1999"));
  EXPECT_EQ(ShortDate(QDate(2024, 11, 9)), QStringLiteral("09/11/2024"));
  EXPECT_EQ(ShortDate(QDate()), QString());
}

TEST_F(TextsTest, ShortDateEnglishHasFourDigitYear) {
  SetRegional(kEnglish);
  EXPECT_EQ(ShortDate(QDate(2000, 3, 4)), QStringLiteral("3/4/2000"));
  EXPECT_EQ(ShortDate(QDate(1999, 12, 31)), QStringLiteral("12/31/1999"));
}

TEST_F(TextsTest, DateFromTextFrench) {
  EXPECT_EQ(DateFromText(QStringLiteral("04/03/2000")), QDate(2000, 3, 4));
  EXPECT_EQ(DateFromText(QStringLiteral("4/3/2000")), QDate(2000, 3, 4));
  EXPECT_EQ(DateFromText(QStringLiteral("31/12/1999")), QDate(1999, 12, 31));
  EXPECT_EQ(DateFromText(QStringLiteral(" 04/03/2000 ")), QDate(2000, 3, 4));
}

TEST_F(TextsTest, DateFromTextSeparators) {
  EXPECT_EQ(DateFromText(QStringLiteral("04-03-2000")), QDate(2000, 3, 4));
  EXPECT_EQ(DateFromText(QStringLiteral("04.03.2000")), QDate(2000, 3, 4));
  EXPECT_EQ(DateFromText(QStringLiteral("04 03 2000")), QDate(2000, 3, 4));
}

TEST_F(TextsTest, DateFromTextTwoDigitYear) {
  EXPECT_EQ(DateFromText(QStringLiteral("04/03/00")), QDate(2000, 3, 4));
  EXPECT_EQ(DateFromText(QStringLiteral("04/03/29")), QDate(2029, 3, 4));
  EXPECT_EQ(DateFromText(QStringLiteral("04/03/30")), QDate(1930, 3, 4));
  EXPECT_EQ(DateFromText(QStringLiteral("04/03/99")), QDate(1999, 3, 4));
}

TEST_F(TextsTest, DateFromTextIso) {
  EXPECT_EQ(DateFromText(QStringLiteral("2000-03-04")), QDate(2000, 3, 4));
  EXPECT_EQ(DateFromText(QStringLiteral("1999-12-31")), QDate(1999, 12, 31));
}

TEST_F(TextsTest, DateFromTextReadsBackShortDate) {
  for (const QDate& date : {QDate(2000, 3, 4), QDate(1999, 12, 31), QDate(2024, 2, 29)})
    EXPECT_EQ(DateFromText(ShortDate(date)), date);
  SetRegional(kEnglish);
  for (const QDate& date : {QDate(2000, 3, 4), QDate(1999, 12, 31), QDate(2024, 2, 29)})
    EXPECT_EQ(DateFromText(ShortDate(date)), date);
  EXPECT_EQ(DateFromText(QStringLiteral("3/4/2000")), QDate(2000, 3, 4));
}

TEST_F(TextsTest, DateFromTextRejectsBadText) {
  for (const char* text : {"31/02/2000", "?", "", "abc", "04/13/2000", "00/03/2000", "04/03",
                           "04/03/2000/1", "4/3/2000x", "29/02/2001"}) {
    EXPECT_EQ(ErrorOf([text] { DateFromText(QString::fromUtf8(text)); }), 13) << text;
    EXPECT_FALSE(IsDateText(QString::fromUtf8(text))) << text;
  }
}

TEST_F(TextsTest, DateFromTextReadsBackTheLongFormOfTheLists) {
  // The dates a list shows through "dd mmmm yyyy" are read back by the store.
  EXPECT_EQ(DateFromText(QStringLiteral("04 mars 2000")), QDate(2000, 3, 4));
  EXPECT_EQ(DateFromText(QStringLiteral("14 février 2024")), QDate(2024, 2, 14));
  EXPECT_EQ(DateFromText(QStringLiteral("30 décembre 2023")), QDate(2023, 12, 30));
  EXPECT_EQ(DateFromText(QStringLiteral("15 août 1999")), QDate(1999, 8, 15));
  const QString mask = QStringLiteral("dd mmmm yyyy");
  for (QDate d(2023, 1, 1); d.year() == 2023; d = d.addDays(1))
    ASSERT_EQ(DateFromText(FormatDate(d, mask)), d) << FormatDate(d, mask).toStdString();
  SetRegional(kEnglish);
  for (QDate d(2024, 1, 1); d.year() == 2024; d = d.addDays(1))
    ASSERT_EQ(DateFromText(FormatDate(d, mask)), d) << FormatDate(d, mask).toStdString();
  for (const char* text : {"31 février 2000", "04 2000", "04 mars 2000 1"})
    EXPECT_EQ(ErrorOf([text] { DateFromText(QString::fromUtf8(text)); }), 13) << text;
}

TEST_F(TextsTest, IsDateText) {
  EXPECT_TRUE(IsDateText(QStringLiteral("04/03/2000")));
  EXPECT_TRUE(IsDateText(QStringLiteral("4/3/2000")));
  EXPECT_TRUE(IsDateText(QStringLiteral("2000-03-04")));
  EXPECT_TRUE(IsDateText(QStringLiteral("29/02/2000")));
  EXPECT_FALSE(IsDateText(QStringLiteral("31/02/2000")));
  EXPECT_FALSE(IsDateText(QStringLiteral("?")));
}

// --- CInt and CLng ----------------------------------------------------------------

TEST_F(TextsTest, CIntRoundsHalfToEven) {
  EXPECT_EQ(CInt(2.5), 2);
  EXPECT_EQ(CInt(3.5), 4);
  EXPECT_EQ(CInt(-2.5), -2);
  EXPECT_EQ(CInt(-3.5), -4);
  EXPECT_EQ(CInt(0.5), 0);
  EXPECT_EQ(CInt(1.5), 2);
  EXPECT_EQ(CInt(2.6), 3);
  EXPECT_EQ(CInt(2.4), 2);
  EXPECT_EQ(CInt(-2.6), -3);
  EXPECT_EQ(CInt(0), 0);
}

TEST_F(TextsTest, CIntRange) {
  EXPECT_EQ(CInt(32767.4), 32767);
  EXPECT_EQ(CInt(-32768.5), -32768);
  EXPECT_EQ(CInt(-32768), -32768);
  EXPECT_EQ(ErrorOf([] { CInt(32767.5); }), 6);
  EXPECT_EQ(ErrorOf([] { CInt(99999); }), 6);
  EXPECT_EQ(ErrorOf([] { CInt(-32768.6); }), 6);
  EXPECT_EQ(ErrorOf([] { CInt(1e300); }), 6);
}

TEST_F(TextsTest, CLng) {
  EXPECT_EQ(CLng(2.5), 2);
  EXPECT_EQ(CLng(3.5), 4);
  EXPECT_EQ(CLng(-2.5), -2);
  EXPECT_EQ(CLng(99999), 99999);
  EXPECT_EQ(CLng(2147483647.4), 2147483647);
  EXPECT_EQ(CLng(-2147483648.5), -2147483647 - 1);
  EXPECT_EQ(ErrorOf([] { CLng(2147483647.5); }), 6);
  EXPECT_EQ(ErrorOf([] { CLng(-2147483649.0); }), 6);
}

// --- CDbl ----------------------------------------------------------------------------

TEST_F(TextsTest, CDblFrench) {
  EXPECT_EQ(CDbl(QStringLiteral("12")), 12.0);
  EXPECT_EQ(CDbl(QStringLiteral("2,5")), 2.5);
  EXPECT_EQ(CDbl(QStringLiteral("2.5")), 2.5);
  EXPECT_EQ(CDbl(QStringLiteral(" 2,5 ")), 2.5);
  EXPECT_EQ(CDbl(QStringLiteral("-2,5")), -2.5);
  EXPECT_EQ(CDbl(QStringLiteral("+7")), 7.0);
  EXPECT_EQ(CDbl(QStringLiteral(",5")), 0.5);
  EXPECT_EQ(CDbl(QStringLiteral("1E3")), 1000.0);
  EXPECT_EQ(CDbl(QStringLiteral("&H1F")), 31.0);
}

TEST_F(TextsTest, CDblRejectsNonNumbers) {
  for (const char* text :
       {"", "?", "abc", " ", "12abc", "1,2,3", "1.2,3", "--1", "-", ",", "1E", "1 2", "Label3"}) {
    EXPECT_EQ(ErrorOf([text] { CDbl(QString::fromUtf8(text)); }), 13) << text;
  }
}

TEST_F(TextsTest, CDblOverflow) {
  EXPECT_EQ(ErrorOf([] { CDbl(QStringLiteral("1E400")); }), 6);
}

TEST_F(TextsTest, CDblEnglish) {
  SetRegional(kEnglish);
  EXPECT_EQ(CDbl(QStringLiteral("2.5")), 2.5);
  EXPECT_EQ(ErrorOf([] { CDbl(QStringLiteral("2,5")); }), 13);
}

}  // namespace
}  // namespace kuvo

TEST(ValueTextTest, StoreValuesAsAnAssignmentToATextMakesThem) {
  kuvo::SetRegional(QLocale(QLocale::French, QLocale::France));
  EXPECT_EQ(kuvo::ValueText(QVariant(qlonglong(7))), QStringLiteral("7"));
  EXPECT_EQ(kuvo::ValueText(QVariant(12.5)), QStringLiteral("12,5"));
  EXPECT_EQ(kuvo::ValueText(QVariant(QDate(2000, 3, 4))), QStringLiteral("04/03/2000"));
  EXPECT_EQ(kuvo::ValueText(QVariant(QStringLiteral("02,07"))), QStringLiteral("02,07"));
  try {
    kuvo::ValueText(QVariant());
    FAIL() << "no error";
  } catch (const kuvo::VbError& e) {
    EXPECT_EQ(e.Number(), 94);
  }
}

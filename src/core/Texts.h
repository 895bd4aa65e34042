#pragma once

#include <QDate>
#include <QLocale>
#include <QString>
#include <QVariant>

#include "core/Errors.h"

// Every text form of numbers and dates the program shows or reads, following the
// machine's regional settings (a QLocale, French by default in tests).
namespace kuvo {

// The regional settings in force. The program sets them once at start from the
// machine; the scenario driver sets them from its `locale` command.
const QLocale& Regional();
void SetRegional(const QLocale& locale);

// Numeric value of a text: leading number only, blanks ignored, "." as separator;
// "?", "" and "Label3" give 0, "12abc" gives 12, "2.6" gives 2.6.
double Val(const QString& text);

// Signed-number text: a leading blank for a value that is not negative, "." as
// separator, no leading zero: 1234 -> " 1234", 0.5 -> " .5", 12.3 -> " 12.3", -2 -> "-2".
QString Str(double value);

// Ordinary text of a double with the regional separator, up to 15 significant
// digits, no useless zero: 12.3 -> "12,3", 12 -> "12", 0.5 -> "0,5", 0 -> "0".
QString NumText(double value);

// A number through a mask of '#', '0' and '.' ("##.#", "##.##"): rounds half away
// from zero, writes only significant digits but always the regional separator:
// 12.34 -> "12,3", 12 -> "12,", 0.46 -> ",5", 0 -> ",".
QString FormatNumber(double value, const QString& mask);

// A date through a mask of dd, mm, mmmm, yy, yyyy with the regional month names:
// "dd mmmm yyyy" -> "04 mars 2000", "mm dd yy" -> "03 04 00", "dd mm yy" -> "04 03 00".
QString FormatDate(const QDate& date, const QString& mask);

// The platform's short date text (regional short format, four-digit year:
// "04/03/2000" in French, "23 Nov 2026" in the C locale) and its reading back,
// both on Regional(). DateFromText reads back every date text the program
// writes in the regional settings (the short date, "dd mmmm yyyy"), numbers in
// the regional order such as the import's day/month/year text ("04/03/2000",
// "4/3/2000"), and ISO text; a text it cannot read raises error 13.
QString ShortDate(const QDate& date);
QDate DateFromText(const QString& text);
// True when DateFromText would succeed.
bool IsDateText(const QString& text);

// Rounding to a 16-bit or 32-bit integer, a half to the even neighbour; a value
// that does not fit raises error 6.
Int16 CInt(double value);
Int32 CLng(double value);

// Conversion of a text to a number as an assignment does: regional separator or
// "."; blanks around are allowed; anything else raises error 13.
double CDbl(const QString& text);

// The text of a value read from the store, as an assignment to a text makes
// it: a double in its ordinary text, a date as the short date text, a whole
// number plainly; null raises error 94.
QString ValueText(const QVariant& value);

}  // namespace kuvo

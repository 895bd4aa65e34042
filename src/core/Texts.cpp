#include "core/Texts.h"

#include <QRegularExpression>
#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>
#include <system_error>
#include <vector>

namespace kuvo {

namespace {

QLocale& RegionalStore() {
  static QLocale locale(QLocale::French, QLocale::France);
  return locale;
}

bool IsAsciiDigit(QChar c) { return c >= QLatin1Char('0') && c <= QLatin1Char('9'); }

// Reads an ASCII number text ("-12.5e3") without regard to the C library's locale,
// which QCoreApplication sets from the environment. A value too large for a double
// raises error 6; one too small gives 0.
double ParseAscii(const std::string& text) {
  const char* first = text.data();
  const char* last = first + text.size();
  const bool negative = first != last && *first == '-';
  if (first != last && (*first == '-' || *first == '+')) ++first;
  double value = 0.0;
  const auto [ptr, ec] = std::from_chars(first, last, value, std::chars_format::general);
  if (ec == std::errc::result_out_of_range) {
    // Out of range one way or the other: the decimal exponent of the leading digit tells.
    const std::size_t e = text.find('e');
    const std::string mantissa = text.substr(0, e);
    const std::size_t dot = std::min(mantissa.find('.'), mantissa.size());
    const std::size_t lead = mantissa.find_first_of("123456789");
    if (lead == std::string::npos) return 0.0;
    long long magnitude = static_cast<long long>(dot) - static_cast<long long>(lead);
    if (e != std::string::npos) magnitude += std::strtoll(text.c_str() + e + 1, nullptr, 10);
    if (magnitude < 0) return 0.0;
    Raise(Err::Overflow);
  }
  if (ec != std::errc() || ptr != last) return 0.0;
  return negative ? -value : value;
}

// The text of `value` in the "%.15G" form ("12.3", "1E+16", "1E-05"): 15 significant
// digits at most, trailing zeros dropped, E notation outside 1E-4 .. 1E15.
std::string General15(double value) {
  if (value == 0.0) return "0";  // also turns -0 into 0
  char buffer[64];
  const auto [ptr, ec] =
      std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::general, 15);
  std::string text = ec == std::errc() ? std::string(buffer, ptr) : std::string("0");
  for (char& c : text)
    if (c == 'e') c = 'E';
  return text;
}

// A value as 15 correctly rounded significant digits and the position of the
// decimal point among them (digits "123", point 1 -> 1.23; point -1 -> 0.0123).
struct Decimal {
  bool negative = false;
  std::string digits;
  int point = 0;
};

Decimal ToDecimal(double value) {
  Decimal d;
  d.negative = value < 0;
  char buffer[64];
  const auto [ptr, ec] = std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value),
                                       std::chars_format::scientific, 14);
  const std::string text = ec == std::errc() ? std::string(buffer, ptr) : std::string("0e+00");
  const std::size_t e = text.find('e');
  for (std::size_t i = 0; i < e; ++i)
    if (text[i] != '.') d.digits += text[i];
  d.point = std::stoi(text.substr(e + 1)) + 1;
  return d;
}

// Decimal digits of the integer and fraction parts after rounding to `places`
// decimals, a half away from zero. The integer part has no leading zero.
void RoundDecimal(const Decimal& d, int places, std::string* integer, std::string* fraction) {
  std::string digits = d.digits;
  int point = d.point;
  if (point < 0) {
    digits.insert(0, static_cast<std::size_t>(-point), '0');
    point = 0;
  }
  const int keep = point + places;
  if (static_cast<int>(digits.size()) < keep) digits.append(keep - digits.size(), '0');
  if (static_cast<int>(digits.size()) > keep) {
    const bool up = digits[keep] >= '5';
    digits.resize(keep);
    if (up) {
      int i = keep - 1;
      while (i >= 0 && digits[i] == '9') digits[i--] = '0';
      if (i >= 0) {
        ++digits[i];
      } else {
        digits.insert(0, 1, '1');
        ++point;
      }
    }
  }
  *integer = digits.substr(0, point);
  *fraction = digits.substr(point);
  const std::size_t nonZero = integer->find_first_not_of('0');
  integer->erase(0, nonZero == std::string::npos ? integer->size() : nonZero);
}

// The order of day, month and year in the regional short date ("dMy" in French).
QString DateOrder() {
  const QString format = Regional().dateFormat(QLocale::ShortFormat);
  QString order;
  for (QChar c : format) {
    const QChar key = c == QLatin1Char('M') ? c : c.toLower();
    if ((key == QLatin1Char('d') || key == QLatin1Char('M') || key == QLatin1Char('y')) &&
        !order.contains(key))
      order += key;
  }
  return order.size() == 3 ? order : QStringLiteral("dMy");
}

// The regional date separator: the first character of the short format that is not
// a field letter.
QString DateSeparator() {
  for (QChar c : Regional().dateFormat(QLocale::ShortFormat))
    if (!c.isLetter() && !c.isSpace()) return QString(c);
  return QStringLiteral("/");
}

bool ParseDate(const QString& text, QDate* out) {
  static const QRegularExpression pattern(
      QStringLiteral("^([0-9]{1,4})\\s*[-./ ]\\s*([0-9]{1,4})\\s*[-./ ]\\s*([0-9]{1,4})$"));
  const QRegularExpressionMatch match = pattern.match(text.trimmed());
  if (!match.hasMatch()) return false;
  const QString parts[3] = {match.captured(1), match.captured(2), match.captured(3)};
  int day = 0, month = 0;
  QString year;
  if (parts[0].size() == 4) {
    // Year first, as in ISO text.
    year = parts[0];
    month = parts[1].toInt();
    day = parts[2].toInt();
    if (parts[1].size() > 2 || parts[2].size() > 2) return false;
  } else {
    const QString order = DateOrder();
    for (int i = 0; i < 3; ++i) {
      if (order[i] == QLatin1Char('y')) {
        year = parts[i];
      } else {
        if (parts[i].size() > 2) return false;
        (order[i] == QLatin1Char('d') ? day : month) = parts[i].toInt();
      }
    }
  }
  int y = year.toInt();
  if (year.size() <= 2) {
    y += y < 30 ? 2000 : 1900;
  } else if (y < 100) {
    return false;
  }
  const QDate date(y, month, day);
  if (!date.isValid()) return false;
  *out = date;
  return true;
}

// The regional short date format with a four-digit year.
QString ShortDateFormat() {
  QString format = Regional().dateFormat(QLocale::ShortFormat);
  static const QRegularExpression years(QStringLiteral("y+"));
  format.replace(years, QStringLiteral("yyyy"));
  return format;
}

// A text with the digits of any script made ASCII digits, in lower case, so
// that two writings of one date compare equal.
QString Plain(const QString& text) {
  QString out;
  out.reserve(text.size());
  for (char32_t c : text.trimmed().toUcs4()) {
    const int digit = QChar::digitValue(c);
    if (digit >= 0)
      out += QLatin1Char(static_cast<char>('0' + digit));
    else
      out += QString::fromUcs4(&c, 1);
  }
  return out.toLower();
}

// Reads back a date text the program wrote in the regional settings: the short
// date (which may hold a month's name or digits of another script) or the mask
// "dd mmmm yyyy". The numbers and the month's name found in the text give the
// candidate dates; the one that is written exactly as the text is the date.
bool ReadWrittenDate(const QString& text, QDate* out) {
  const QLocale& locale = Regional();
  const QString plain = Plain(text);
  if (plain.isEmpty()) return false;
  struct Found {
    int month;
    qsizetype at, size;
  };
  std::vector<Found> months;
  for (int m = 1; m <= 12; ++m) {
    const QString names[] = {locale.monthName(m, QLocale::LongFormat),
                             locale.monthName(m, QLocale::ShortFormat),
                             locale.standaloneMonthName(m, QLocale::LongFormat),
                             locale.standaloneMonthName(m, QLocale::ShortFormat)};
    for (const QString& name : names) {
      const QString n = Plain(name);
      const qsizetype at = n.isEmpty() ? -1 : plain.indexOf(n);
      if (at >= 0) months.push_back({m, at, n.size()});
    }
  }
  auto numbers = [](const QString& t) {
    static const QRegularExpression digits(QStringLiteral("[0-9]+"));
    std::vector<int> found;
    for (auto it = digits.globalMatch(t); it.hasNext();) {
      const QString run = it.next().captured();
      if (run.size() > 4) return std::vector<int>();
      found.push_back(run.toInt());
    }
    return found;
  };
  const QString mask = QStringLiteral("dd mmmm yyyy");
  auto matches = [&](const QDate& date) {
    return date.isValid() &&
           (Plain(ShortDate(date)) == plain || Plain(FormatDate(date, mask)) == plain);
  };
  for (const Found& f : months) {
    QString rest = plain;
    rest.replace(f.at, f.size, QLatin1Char(' '));
    const std::vector<int> n = numbers(rest);
    if (n.size() != 2) continue;
    for (const QDate& date : {QDate(n[1], f.month, n[0]), QDate(n[0], f.month, n[1])})
      if (matches(date)) {
        *out = date;
        return true;
      }
  }
  std::vector<int> n = numbers(plain);
  if (n.size() != 3) return false;
  // Day, month and year in any order: the one written as the text wins.
  const int orders[6][3] = {{0, 1, 2}, {1, 0, 2}, {2, 1, 0}, {0, 2, 1}, {1, 2, 0}, {2, 0, 1}};
  for (const auto& o : orders) {
    const QDate date(n[o[2]], n[o[1]], n[o[0]]);
    if (matches(date)) {
      *out = date;
      return true;
    }
  }
  return false;
}

// Reads a date text: numbers in the regional order (or year first), then any
// text the program writes in the regional settings, then the regional formats
// as the platform reads them.
bool ReadDate(const QString& text, QDate* out) {
  if (ParseDate(text, out)) return true;
  if (ReadWrittenDate(text, out)) return true;
  const QString t = text.trimmed();
  if (t.isEmpty()) return false;
  const QLocale& locale = Regional();
  const QString formats[] = {locale.dateFormat(QLocale::ShortFormat), QStringLiteral("d MMMM yyyy"),
                             QStringLiteral("d MMM yyyy"), locale.dateFormat(QLocale::LongFormat)};
  for (const QString& format : formats) {
    const QDate date = locale.toDate(t, format);
    if (date.isValid()) {
      *out = date;
      return true;
    }
  }
  return false;
}

// Rounds to the nearest integer, a half to the even neighbour.
double RoundHalfEven(double value) {
  const double floor = std::floor(value);
  const double rest = value - floor;
  if (rest > 0.5) return floor + 1;
  if (rest < 0.5) return floor;
  return std::fmod(floor, 2.0) == 0 ? floor : floor + 1;
}

}  // namespace

const QLocale& Regional() { return RegionalStore(); }

void SetRegional(const QLocale& locale) { RegionalStore() = locale; }

double Val(const QString& text) {
  // Blanks, tabs and line feeds do not count, wherever they are.
  QString s;
  s.reserve(text.size());
  for (QChar c : text)
    if (c != QLatin1Char(' ') && c != QLatin1Char('\t') && c != QLatin1Char('\n')) s += c;

  // "&H1F" (hexadecimal) and "&O17" or "&17" (octal): read as a 16-bit value when it
  // fits in 16 bits, else as a 32-bit one, so that "&HFFFF" is -1.
  if (s.startsWith(QLatin1Char('&'))) {
    int base = 8;
    int i = 1;
    if (i < s.size() && s[i].toUpper() == QLatin1Char('H')) {
      base = 16;
      ++i;
    } else if (i < s.size() && s[i].toUpper() == QLatin1Char('O')) {
      ++i;
    }
    std::uint64_t value = 0;
    for (; i < s.size(); ++i) {
      const char16_t c = QChar(s[i]).toLower().unicode();
      int digit = base;
      if (c >= u'0' && c <= u'9') digit = c - u'0';
      if (c >= u'a' && c <= u'f') digit = c - u'a' + 10;
      if (digit >= base) break;
      value = value * base + digit;
      if (value > 0xFFFFFFFFull) Raise(Err::Overflow);
    }
    const bool longSuffix = i < s.size() && s[i] == QLatin1Char('&');
    if (value <= 0xFFFF && !longSuffix)
      return static_cast<Int16>(static_cast<std::uint16_t>(value));
    return static_cast<Int32>(static_cast<std::uint32_t>(value));
  }

  std::string number;
  int i = 0;
  const int n = s.size();
  if (i < n && (s[i] == QLatin1Char('-') || s[i] == QLatin1Char('+')))
    number += static_cast<char>(s[i++].unicode());
  std::string mantissa;
  while (i < n && IsAsciiDigit(s[i])) mantissa += static_cast<char>(s[i++].unicode());
  if (i < n && s[i] == QLatin1Char('.')) {
    ++i;
    std::string decimals;
    while (i < n && IsAsciiDigit(s[i])) decimals += static_cast<char>(s[i++].unicode());
    if (!decimals.empty()) mantissa += "." + decimals;
  }
  if (mantissa.empty()) return 0.0;
  number += mantissa;
  if (i < n && (s[i].toUpper() == QLatin1Char('E') || s[i].toUpper() == QLatin1Char('D'))) {
    std::string exponent = "e";
    int j = i + 1;
    if (j < n && (s[j] == QLatin1Char('-') || s[j] == QLatin1Char('+')))
      exponent += static_cast<char>(s[j++].unicode());
    bool any = false;
    while (j < n && IsAsciiDigit(s[j])) {
      exponent += static_cast<char>(s[j++].unicode());
      any = true;
    }
    if (any) number += exponent;
  }
  return ParseAscii(number) + 0.0;
}

QString Str(double value) {
  std::string text = General15(value);
  // No zero before the point: "0.5" -> ".5", "-0.5" -> "-.5".
  if (text.rfind("0.", 0) == 0) text.erase(0, 1);
  if (text.rfind("-0.", 0) == 0) text.erase(1, 1);
  if (text[0] != '-') text.insert(0, 1, ' ');
  return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

QString NumText(double value) {
  QString text = QString::fromStdString(General15(value));
  text.replace(QLatin1Char('.'), Regional().decimalPoint());
  return text;
}

QString FormatNumber(double value, const QString& mask) {
  if (!std::isfinite(value)) return NumText(value);

  // The mask: '#' and '0' places before and after the one '.'; any other character
  // is copied before the number when it leads the mask, after it otherwise.
  QString prefix, suffix;
  int places = 0, minInteger = 0, minFraction = 0;
  bool separator = false, seenPlace = false, seenZero = false;
  for (QChar c : mask) {
    if (c == QLatin1Char('.') && !separator) {
      separator = true;
      seenPlace = true;
    } else if (c == QLatin1Char('#') || c == QLatin1Char('0')) {
      seenPlace = true;
      if (separator) {
        ++places;
        if (c == QLatin1Char('0')) minFraction = places;
      } else {
        seenZero = seenZero || c == QLatin1Char('0');
        if (seenZero) ++minInteger;
      }
    } else {
      (seenPlace ? suffix : prefix) += c;
    }
  }

  std::string integer, fraction;
  RoundDecimal(ToDecimal(value), places, &integer, &fraction);
  if (static_cast<int>(integer.size()) < minInteger)
    integer.insert(0, minInteger - integer.size(), '0');
  while (static_cast<int>(fraction.size()) > minFraction && fraction.back() == '0')
    fraction.pop_back();

  QString text = prefix;
  if (value < 0) text += QLatin1Char('-');
  text += QString::fromStdString(integer);
  if (separator) text += Regional().decimalPoint();
  text += QString::fromStdString(fraction);
  return text + suffix;
}

QString FormatDate(const QDate& date, const QString& mask) {
  const QLocale& locale = Regional();
  QString text;
  const int n = mask.size();
  int i = 0;
  // Length of the run of `letter` (either case) starting at i.
  auto run = [&](QChar letter) {
    int j = i;
    while (j < n && mask[j].toLower() == letter) ++j;
    return j - i;
  };
  while (i < n) {
    const QChar c = mask[i];
    const QChar lower = c.toLower();
    if (lower == QLatin1Char('d')) {
      const int count = qMin(run(lower), 5);
      switch (count) {
        case 1: text += QString::number(date.day()); break;
        case 2: text += QStringLiteral("%1").arg(date.day(), 2, 10, QLatin1Char('0')); break;
        case 3: text += locale.dayName(date.dayOfWeek(), QLocale::ShortFormat); break;
        case 4: text += locale.dayName(date.dayOfWeek(), QLocale::LongFormat); break;
        default: text += ShortDate(date); break;
      }
      i += count;
    } else if (lower == QLatin1Char('m')) {
      const int count = qMin(run(lower), 4);
      switch (count) {
        case 1: text += QString::number(date.month()); break;
        case 2: text += QStringLiteral("%1").arg(date.month(), 2, 10, QLatin1Char('0')); break;
        case 3: text += locale.monthName(date.month(), QLocale::ShortFormat); break;
        default: text += locale.monthName(date.month(), QLocale::LongFormat); break;
      }
      i += count;
    } else if (lower == QLatin1Char('y')) {
      const int count = run(lower);
      if (count >= 4) {
        text += QStringLiteral("%1").arg(date.year(), 4, 10, QLatin1Char('0'));
        i += 4;
      } else if (count >= 2) {
        text += QStringLiteral("%1").arg(date.year() % 100, 2, 10, QLatin1Char('0'));
        i += 2;
      } else {
        text += QString::number(date.dayOfYear());  // "y" alone is the day of the year
        i += 1;
      }
    } else if (lower == QLatin1Char('q')) {
      text += QString::number((date.month() + 2) / 3);
      ++i;
    } else if (c == QLatin1Char('/')) {
      text += DateSeparator();
      ++i;
    } else if (c == QLatin1Char('\\') && i + 1 < n) {
      text += mask[i + 1];
      i += 2;
    } else if (c == QLatin1Char('"')) {
      const int end = mask.indexOf(QLatin1Char('"'), i + 1);
      const int stop = end < 0 ? n : end;
      text += mask.mid(i + 1, stop - i - 1);
      i = stop + 1;
    } else {
      text += c;
      ++i;
    }
  }
  return text;
}

QString ShortDate(const QDate& date) {
  if (!date.isValid()) return {};
  return Regional().toString(date, ShortDateFormat());
}

QDate DateFromText(const QString& text) {
  QDate date;
  if (!ReadDate(text, &date)) Raise(Err::TypeMismatch);
  return date;
}

bool IsDateText(const QString& text) {
  QDate date;
  return ReadDate(text, &date);
}

Int16 CInt(double value) {
  const double rounded = RoundHalfEven(value);
  if (!(rounded >= std::numeric_limits<Int16>::min() &&
        rounded <= std::numeric_limits<Int16>::max()))
    Raise(Err::Overflow);
  return static_cast<Int16>(rounded);
}

Int32 CLng(double value) {
  const double rounded = RoundHalfEven(value);
  if (!(rounded >= std::numeric_limits<Int32>::min() &&
        rounded <= std::numeric_limits<Int32>::max()))
    Raise(Err::Overflow);
  return static_cast<Int32>(rounded);
}

double CDbl(const QString& text) {
  const QString s = text.trimmed();
  if (s.startsWith(QLatin1Char('&'))) {
    // "&H1F" and "&O17": the same reading as Val, but nothing may follow.
    static const QRegularExpression radix(QStringLiteral("^&([hH][0-9A-Fa-f]+|[oO]?[0-7]+)&?$"));
    if (!radix.match(s).hasMatch()) Raise(Err::TypeMismatch);
    return Val(s);
  }
  const QString point = Regional().decimalPoint();
  std::string number;
  bool digits = false, separator = false, exponent = false;
  for (int i = 0; i < s.size(); ++i) {
    const QChar c = s[i];
    if (IsAsciiDigit(c)) {
      number += static_cast<char>(c.unicode());
      digits = true;
    } else if ((c == QLatin1Char('-') || c == QLatin1Char('+')) &&
               (i == 0 || (exponent && number.back() == 'e'))) {
      number += static_cast<char>(c.unicode());
    } else if ((c == QLatin1Char('.') || QString(c) == point) && !separator && !exponent) {
      number += '.';
      separator = true;
    } else if ((c.toUpper() == QLatin1Char('E') || c.toUpper() == QLatin1Char('D')) && digits &&
               !exponent && i + 1 < s.size()) {
      number += 'e';
      exponent = true;
    } else {
      Raise(Err::TypeMismatch);
    }
  }
  if (!digits || number.back() == 'e' || number.back() == '-' || number.back() == '+')
    Raise(Err::TypeMismatch);
  return ParseAscii(number) + 0.0;
}

QString ValueText(const QVariant& value) {
  if (value.isNull()) Raise(Err::InvalidUseOfNull);
  if (value.typeId() == QMetaType::Double) return NumText(value.toDouble());
  if (value.typeId() == QMetaType::QDate) return ShortDate(value.toDate());
  return value.toString();
}

}  // namespace kuvo

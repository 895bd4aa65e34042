#include "core/StoreValue.h"

#include <QString>
#include <cmath>
#include <limits>

#include "core/Texts.h"

namespace kuvo::store {

ColType TypeOf(const char* declared) {
  if (!declared || !*declared) return ColType::Any;
  const QString t = QString::fromUtf8(declared).toUpper();
  if (t.contains(QLatin1String("SMALLINT")) || t == QLatin1String("SHORT"))
    return ColType::SmallInt;
  if (t.contains(QLatin1String("BIGINT")) || t.contains(QLatin1String("INT8")))
    return ColType::BigInt;
  if (t.contains(QLatin1String("INT")) || t == QLatin1String("LONG")) return ColType::Long;
  if (t.contains(QLatin1String("DATE")) || t.contains(QLatin1String("TIME"))) return ColType::Date;
  if (t.contains(QLatin1String("REAL")) || t.contains(QLatin1String("FLOA")) ||
      t.contains(QLatin1String("DOUB")) || t.contains(QLatin1String("NUMERIC")) ||
      t.contains(QLatin1String("DECIMAL")) || t.contains(QLatin1String("CURRENCY")))
    return ColType::Real;
  return ColType::Text;
}

void ReadCell(sqlite3_stmt* st, int col, Cell& c) {
  c.type = sqlite3_column_type(st, col);
  switch (c.type) {
    case SQLITE_INTEGER: c.i = sqlite3_column_int64(st, col); break;
    case SQLITE_FLOAT: c.r = sqlite3_column_double(st, col); break;
    case SQLITE_TEXT: {
      const char* p = reinterpret_cast<const char*>(sqlite3_column_text(st, col));
      c.s.assign(p, sqlite3_column_bytes(st, col));
      break;
    }
    case SQLITE_BLOB: {
      const char* p = static_cast<const char*>(sqlite3_column_blob(st, col));
      c.s.assign(p ? p : "", sqlite3_column_bytes(st, col));
      break;
    }
    default: break;
  }
}

void BindCell(sqlite3_stmt* st, int param, const Cell& c) {
  switch (c.type) {
    case SQLITE_INTEGER: sqlite3_bind_int64(st, param, c.i); break;
    case SQLITE_FLOAT: sqlite3_bind_double(st, param, c.r); break;
    case SQLITE_TEXT:
      sqlite3_bind_text(st, param, c.s.data(), static_cast<int>(c.s.size()), SQLITE_STATIC);
      break;
    case SQLITE_BLOB:
      sqlite3_bind_blob(st, param, c.s.data(), static_cast<int>(c.s.size()), SQLITE_STATIC);
      break;
    default: sqlite3_bind_null(st, param); break;
  }
}

void SetText(Cell& c, const QString& text) {
  c.type = SQLITE_TEXT;
  // Plain ASCII, the common case, is copied as it stands.
  const qsizetype n = text.size();
  const QChar* chars = text.constData();
  c.s.resize(static_cast<size_t>(n));
  for (qsizetype i = 0; i < n; ++i) {
    const char16_t u = chars[i].unicode();
    if (u >= 0x80) {
      const QByteArray utf8 = text.toUtf8();
      c.s.assign(utf8.constData(), static_cast<size_t>(utf8.size()));
      return;
    }
    c.s[static_cast<size_t>(i)] = static_cast<char>(u);
  }
}

QDate IsoDate(const std::string& s) {
  auto digit = [&s](int i) { return s[i] >= '0' && s[i] <= '9'; };
  if (s.size() != 10 || s[4] != '-' || s[7] != '-') return {};
  for (int i : {0, 1, 2, 3, 5, 6, 8, 9})
    if (!digit(i)) return {};
  const int y = (s[0] - '0') * 1000 + (s[1] - '0') * 100 + (s[2] - '0') * 10 + (s[3] - '0');
  const int m = (s[5] - '0') * 10 + (s[6] - '0');
  const int d = (s[8] - '0') * 10 + (s[9] - '0');
  return QDate(y, m, d);
}

namespace {

double RoundHalfEven(double value) {
  const double floor = std::floor(value);
  const double rest = value - floor;
  if (rest > 0.5) return floor + 1;
  if (rest < 0.5) return floor;
  return std::fmod(floor, 2.0) == 0 ? floor : floor + 1;
}

bool FitsInteger(ColType t, long double v) {
  switch (t) {
    case ColType::SmallInt: return v >= -32768 && v <= 32767;
    case ColType::Long: return v >= -2147483648.0L && v <= 2147483647.0L;
    default: return v >= -9223372036854775808.0L && v < 9223372036854775808.0L;
  }
}

}  // namespace

bool ToCell(const Value& v, ColType type, Cell& out) {
  out = Cell{};
  if (!v.isValid() || v.typeId() == QMetaType::Nullptr) return true;

  enum class Kind { Integral, Number, Text, Date } kind;
  sqlite3_int64 integral = 0;
  double number = 0;
  QString text;
  QDate date;
  switch (v.typeId()) {
    case QMetaType::Bool:
      kind = Kind::Integral;
      integral = v.toBool() ? -1 : 0;
      break;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Long:
    case QMetaType::LongLong:
      kind = Kind::Integral;
      integral = v.toLongLong();
      break;
    case QMetaType::ULong:
    case QMetaType::ULongLong:
      if (v.toULongLong() > static_cast<qulonglong>(std::numeric_limits<qlonglong>::max()))
        return false;
      kind = Kind::Integral;
      integral = v.toLongLong();
      break;
    case QMetaType::Double:
    case QMetaType::Float:
      kind = Kind::Number;
      number = v.toDouble();
      if (!std::isfinite(number)) return false;
      break;
    case QMetaType::QString:
    case QMetaType::QChar:
    case QMetaType::QByteArray:
      kind = Kind::Text;
      text = v.toString();
      break;
    case QMetaType::QDate:
    case QMetaType::QDateTime:
      kind = Kind::Date;
      date = v.toDate();
      if (!date.isValid()) return false;
      break;
    default: return false;
  }

  switch (type) {
    case ColType::SmallInt:
    case ColType::Long:
    case ColType::BigInt: {
      if (kind == Kind::Text) {
        try {
          number = CDbl(text.trimmed());
        } catch (const VbError&) {
          return false;
        }
        kind = Kind::Number;
      } else if (kind == Kind::Date) {
        integral = kDayZero.daysTo(date);
        kind = Kind::Integral;
      }
      if (kind == Kind::Number) {
        const double rounded = RoundHalfEven(number);
        if (!FitsInteger(type, rounded)) return false;
        integral = static_cast<sqlite3_int64>(rounded);
      } else if (!FitsInteger(type, integral)) {
        return false;
      }
      out.type = SQLITE_INTEGER;
      out.i = integral;
      return true;
    }
    case ColType::Real:
      if (kind == Kind::Text) {
        try {
          number = CDbl(text.trimmed());
        } catch (const VbError&) {
          return false;
        }
      } else if (kind == Kind::Integral) {
        number = static_cast<double>(integral);
      } else if (kind == Kind::Date) {
        number = static_cast<double>(kDayZero.daysTo(date));
      }
      out.type = SQLITE_FLOAT;
      out.r = number;
      return true;
    case ColType::Date:
      if (kind == Kind::Text) {
        const QString t = text.trimmed();
        if (!IsDateText(t)) return false;
        try {
          date = DateFromText(t);
        } catch (const VbError&) {
          return false;
        }
      } else if (kind != Kind::Date) {
        const double days = kind == Kind::Integral ? static_cast<double>(integral) : number;
        if (std::fabs(days) > 3e6) return false;
        date = kDayZero.addDays(static_cast<qint64>(std::floor(days)));
      }
      if (!date.isValid()) return false;
      SetText(out, date.toString(Qt::ISODate));
      return true;
    case ColType::Text:
    case ColType::Any:
      switch (kind) {
        case Kind::Text: SetText(out, text); break;
        case Kind::Integral:
          if (v.typeId() == QMetaType::Bool)
            SetText(out, integral ? QStringLiteral("Vrai") : QStringLiteral("Faux"));
          else
            SetText(out, QString::number(integral));
          break;
        case Kind::Number:
          if (number == std::trunc(number) && std::fabs(number) < 1e15)
            SetText(out, QString::number(static_cast<qlonglong>(number)));
          else
            SetText(out, NumText(number));
          break;
        case Kind::Date: SetText(out, ShortDate(date)); break;
      }
      return true;
  }
  return false;
}

Value ToValue(const Cell& c, ColType type) {
  switch (c.type) {
    case SQLITE_NULL: return {};
    case SQLITE_BLOB: return QByteArray(c.s.data(), static_cast<qsizetype>(c.s.size()));
    default: break;
  }
  switch (type) {
    case ColType::SmallInt:
    case ColType::Long:
    case ColType::BigInt:
    case ColType::Any:
      if (c.type == SQLITE_INTEGER) return static_cast<qlonglong>(c.i);
      if (c.type == SQLITE_FLOAT) return c.r;
      return QString::fromUtf8(c.s.data(), static_cast<qsizetype>(c.s.size()));
    case ColType::Real:
      if (c.type == SQLITE_INTEGER) return static_cast<double>(c.i);
      if (c.type == SQLITE_FLOAT) return c.r;
      return QString::fromUtf8(c.s.data(), static_cast<qsizetype>(c.s.size()));
    case ColType::Date:
      if (c.type == SQLITE_TEXT) {
        const QDate d = IsoDate(c.s);
        if (d.isValid()) return d;
        return QString::fromUtf8(c.s.data(), static_cast<qsizetype>(c.s.size()));
      }
      return kDayZero.addDays(
          static_cast<qint64>(c.type == SQLITE_INTEGER ? c.i : std::floor(c.r)));
    case ColType::Text:
      if (c.type == SQLITE_INTEGER) return QString::number(c.i);
      if (c.type == SQLITE_FLOAT) return NumText(c.r);
      return QString::fromUtf8(c.s.data(), static_cast<qsizetype>(c.s.size()));
  }
  return {};
}

}  // namespace kuvo::store

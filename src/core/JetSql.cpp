#include "core/JetSql.h"

#include <QDate>
#include <QRegularExpression>

#include "core/Errors.h"

namespace kuvo {

namespace {

// A two-digit year is the year with those last digits in the hundred years
// from the current year minus 80 to the current year plus 19.
int FullYear(const QString& digits, int currentYear) {
  const int year = digits.toInt();
  if (digits.size() > 2) return year;
  const int first = currentYear - 80;
  return first + ((year - first) % 100 + 100) % 100;
}

// The body of a #...# literal as an ISO date text.
QString DateLiteral(const QString& body, int currentYear) {
  static const QRegularExpression pattern(
      QStringLiteral("^\\s*([0-9]{1,4})[\\s/.-]+([0-9]{1,2})[\\s/.-]+([0-9]{1,4})\\s*$"));
  const QRegularExpressionMatch m = pattern.match(body);
  QDate date;
  if (m.hasMatch()) {
    if (m.captured(1).size() == 4)
      date = QDate(m.captured(1).toInt(), m.captured(2).toInt(), m.captured(3).toInt());
    else
      date =
          QDate(FullYear(m.captured(3), currentYear), m.captured(1).toInt(), m.captured(2).toInt());
  }
  if (!date.isValid())
    Raise(3075, QStringLiteral("Erreur de syntaxe dans la date de l'expression '#%1#'.").arg(body));
  return date.toString(Qt::ISODate);
}

// Rewrites the literals: "text" and #date# become single-quoted SQLite texts;
// 'text' and [name] are copied as they are.
QString RewriteLiterals(const QString& s, int currentYear) {
  QString out;
  out.reserve(s.size() + 16);
  const qsizetype n = s.size();
  qsizetype i = 0;
  while (i < n) {
    const QChar c = s[i];
    if (c == QLatin1Char('\'') || c == QLatin1Char('[')) {
      // Copied up to the closing quote ('' inside stays) or bracket.
      const QChar close = c == QLatin1Char('[') ? QLatin1Char(']') : c;
      qsizetype j = i + 1;
      while (j < n) {
        if (s[j] == close) {
          if (close == QLatin1Char('\'') && j + 1 < n && s[j + 1] == close) {
            j += 2;
            continue;
          }
          break;
        }
        ++j;
      }
      const qsizetype end = j < n ? j + 1 : n;
      out += QStringView(s).mid(i, end - i);
      i = end;
    } else if (c == QLatin1Char('"')) {
      QString text;
      qsizetype j = i + 1;
      bool closed = false;
      while (j < n) {
        if (s[j] == QLatin1Char('"')) {
          if (j + 1 < n && s[j + 1] == QLatin1Char('"')) {
            text += QLatin1Char('"');
            j += 2;
            continue;
          }
          closed = true;
          break;
        }
        text += s[j];
        ++j;
      }
      if (!closed) {  // left for SQLite to report
        out += QStringView(s).mid(i);
        break;
      }
      text.replace(QLatin1Char('\''), QStringLiteral("''"));
      out += QLatin1Char('\'') + text + QLatin1Char('\'');
      i = j + 1;
    } else if (c == QLatin1Char('#')) {
      const qsizetype j = s.indexOf(QLatin1Char('#'), i + 1);
      if (j < 0) {
        out += QStringView(s).mid(i);
        break;
      }
      out +=
          QLatin1Char('\'') + DateLiteral(s.mid(i + 1, j - i - 1), currentYear) + QLatin1Char('\'');
      i = j + 1;
    } else {
      out += c;
      ++i;
    }
  }
  return out;
}

}  // namespace

JetTranslation TranslateJet(const QString& statement, int currentYear) {
  static const QRegularExpression deleteStar(QStringLiteral("^\\s*delete\\s*\\*\\s*from\\b"),
                                             QRegularExpression::CaseInsensitiveOption);
  static const QRegularExpression selectStar(QStringLiteral("^\\s*select\\s*\\*\\s*"),
                                             QRegularExpression::CaseInsensitiveOption);
  // "select * from T" alone or followed by a where / order by clause: T's rows
  // can be reached again by rowid.
  static const QRegularExpression singleTable(
      QStringLiteral(
          "^from\\s+(\\[[^\\]]+\\]|[A-Za-z_][A-Za-z0-9_]*)(?=\\s*(;|$|where\\b|order\\b))"),
      QRegularExpression::CaseInsensitiveOption);

  JetTranslation result;
  QString head;
  QString rest = statement;
  if (const QRegularExpressionMatch m = deleteStar.match(statement); m.hasMatch()) {
    head = QStringLiteral("DELETE FROM");
    rest = statement.mid(m.capturedEnd());
  } else if (const QRegularExpressionMatch s = selectStar.match(statement); s.hasMatch()) {
    rest = statement.mid(s.capturedEnd());
    if (const QRegularExpressionMatch t = singleTable.match(rest); t.hasMatch()) {
      head = QStringLiteral("select rowid,* ");
      result.baseTable = t.captured(1);
      if (result.baseTable.startsWith(QLatin1Char('[')))
        result.baseTable = result.baseTable.mid(1, result.baseTable.size() - 2);
    } else {
      head = QStringLiteral("select * ");
    }
  }
  result.sql = head + RewriteLiterals(rest, currentYear);
  return result;
}

}  // namespace kuvo

#pragma once

#include <QString>

// The program's statements are written in Jet's dialect; this turns them into
// SQLite statements. Kept pure so every form can be checked on its own.
namespace kuvo {

struct JetTranslation {
  // The statement in SQLite's dialect.
  QString sql;
  // For "select * from T [where ...] [order by ...]": T, and `sql` then returns
  // T's rowid as its first column. Empty for any other statement.
  QString baseTable;
};

// Rewrites a Jet statement:
//  - "DELETE * FROM T" -> "DELETE FROM T";
//  - "select* from" -> "select * from", and "select * from T ..." -> "select rowid,* from T ...";
//  - date literals #mm dd yy#, #mm/dd/yyyy# (month, day, year) and #yyyy-mm-dd#
//    -> 'YYYY-MM-DD'; a two-digit year falls in the hundred years from
//    `currentYear` - 80 to `currentYear` + 19, so the window slides with the clock;
//  - "text" -> 'text' (a doubled "" inside becomes ", a ' is doubled).
// Single-quoted literals and [bracketed] names are left as they are. A date
// literal that is not a date raises 3075.
JetTranslation TranslateJet(const QString& statement, int currentYear);

}  // namespace kuvo

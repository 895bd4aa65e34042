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
//  - date literals #mm dd yy#, #mm/dd/yyyy# (month, day, year; years 00-29 are
//    20xx, 30-99 are 19xx) and #yyyy-mm-dd# -> 'YYYY-MM-DD';
//  - "text" -> 'text' (a doubled "" inside becomes ", a ' is doubled).
// Single-quoted literals and [bracketed] names are left as they are. A date
// literal that is not a date raises 3075.
JetTranslation TranslateJet(const QString& statement);

}  // namespace kuvo

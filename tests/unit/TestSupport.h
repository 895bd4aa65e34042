#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <QTemporaryDir>

#include "ScriptRunner.h"
#include "ScriptedPlatform.h"
#include "core/Module1.h"
#include "core/Program.h"
#include "core/Store.h"

namespace kuvo::test {

// One value read from a store file by a connection of its own.
inline QString QueryFile(const QString& path, const QString& sql) {
  sqlite3* db = nullptr;
  QString result;
  if (sqlite3_open_v2(path.toUtf8().constData(), &db, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK) {
    sqlite3_stmt* stmt = nullptr;
    if (sqlite3_prepare_v2(db, sql.toUtf8().constData(), -1, &stmt, nullptr) == SQLITE_OK &&
        sqlite3_step(stmt) == SQLITE_ROW) {
      const unsigned char* t = sqlite3_column_text(stmt, 0);
      result = t ? QString::fromUtf8(reinterpret_cast<const char*>(t)) : QString();
    }
    sqlite3_finalize(stmt);
  }
  sqlite3_close(db);
  return result;
}

// A program on the scripted platform in a fresh application folder.
struct TestApp {
  QTemporaryDir dir;
  ScriptRunner runner{dir.path(), dir.path()};

  // Runs a piece of script and returns what a user would have seen.
  QString Run(const QString& script) { return runner.RunText(script); }
  Program& program() { return runner.program(); }
  ScriptedPlatform& platform() { return runner.platform(); }
  QString StorePath() const { return dir.filePath(QStringLiteral("Kuvo.Mdb")); }

  // One value read from the store file by a connection of its own, after
  // what the program wrote has been committed.
  QString Query(const QString& sql) {
    if (program().M().BaseDonnees) program().M().BaseDonnees->CommitPending();
    return QueryFile(StorePath(), sql);
  }
};

// A line of Kuvo as the operator's file has it, for a draw on `date` (YYYYMMDD).
inline QString KuvoInsert(const QString& date, int b1, int b2, int b3, int b4, int b5, int chance) {
  return QStringLiteral(
             "INSERT INTO Kuvo (date_de_tirage, boule_1, boule_2, boule_3, boule_4, boule_5, "
             "Numero_Chance) VALUES ('%1', %2, %3, %4, %5, %6, %7);")
      .arg(date)
      .arg(b1)
      .arg(b2)
      .arg(b3)
      .arg(b4)
      .arg(b5)
      .arg(chance);
}

}  // namespace kuvo::test

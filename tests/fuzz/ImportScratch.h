#pragma once

// The import window on a scratch store, shared by its fuzz target and by the
// unit test that replays the committed corpus.

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <stdexcept>

#include "ScriptRunner.h"

namespace kuvo::fuzz {

class ImportScratch {
 public:
  // A store of one draw, compiled at its first start.
  ImportScratch() {
    if (!folder_.isValid()) throw std::runtime_error("no scratch folder");
    {
      ScriptRunner runner(folder_.path(), folder_.path());
      runner.RunText(QStringLiteral(
          "store new\n"
          "sql \"INSERT INTO Kuvo (date_de_tirage, boule_1, boule_2, boule_3, boule_4, boule_5, "
          "Numero_Chance) VALUES ('20231227', 10, 20, 30, 40, 49, 1)\"\n"
          "start\n"));
    }
    QFile file(Path(QStringLiteral("Kuvo.Mdb")));
    if (!file.open(QIODevice::ReadOnly)) throw std::runtime_error("no scratch store");
    store_ = file.readAll();
  }

  // The file chosen in the import window, loaded twice into the store as it
  // was made; returns what the user saw. The critical message, error 5's
  // silence and the platform's error report are normal ends.
  QString Load(const QByteArray& chosen) {
    QDir dir(folder_.path());
    for (const QString& name : dir.entryList(QDir::Files | QDir::Hidden)) dir.remove(name);
    Put(QStringLiteral("Kuvo.Mdb"), store_);
    Put(QStringLiteral("Kuvo.csv"), chosen);
    ScriptRunner runner(folder_.path(), folder_.path());
    return runner.RunText(
        QStringLiteral("start\n"
                       "menu M_MiseJour\n"
                       "answer-file Kuvo.csv\n"
                       "click ChargeMiseJour.Cmd_Importation\n"
                       "answer-file Kuvo.csv\n"
                       "click ChargeMiseJour.Cmd_Importation\n"));
  }

 private:
  QString Path(const QString& name) const { return QDir(folder_.path()).filePath(name); }

  void Put(const QString& name, const QByteArray& bytes) {
    QFile file(Path(name));
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
      throw std::runtime_error("cannot write the scratch folder");
  }

  QTemporaryDir folder_;
  QByteArray store_;  // the scratch store as it is before each input
};

}  // namespace kuvo::fuzz

// Fuzz target: the file the user chooses in the import window, loaded twice
// through the scripted platform into a scratch store of one compiled draw. The
// critical message, error 5's silence and the platform's error report are
// normal ends.
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <cstdint>

#include "ScriptRunner.h"

namespace {

QTemporaryDir* folder = nullptr;
QByteArray* store = nullptr;  // the scratch store as it is before each input

void Put(const QString& name, const QByteArray& bytes) {
  QFile file(QDir(folder->path()).filePath(name));
  if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  folder = new QTemporaryDir;
  if (!folder->isValid()) std::abort();
  {
    kuvo::ScriptRunner runner(folder->path(), folder->path());
    runner.RunText(QStringLiteral(
        "store new\n"
        "sql \"INSERT INTO Kuvo (date_de_tirage, boule_1, boule_2, boule_3, boule_4, boule_5, "
        "Numero_Chance) VALUES ('20231227', 10, 20, 30, 40, 49, 1)\"\n"
        "start\n"));
  }
  QFile file(QDir(folder->path()).filePath(QStringLiteral("Kuvo.Mdb")));
  if (!file.open(QIODevice::ReadOnly)) std::abort();
  store = new QByteArray(file.readAll());
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  QDir dir(folder->path());
  for (const QString& name : dir.entryList(QDir::Files | QDir::Hidden)) dir.remove(name);
  Put(QStringLiteral("Kuvo.Mdb"), *store);
  Put(QStringLiteral("Kuvo.csv"),
      QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
  kuvo::ScriptRunner runner(folder->path(), folder->path());
  runner.RunText(
      QStringLiteral("start\n"
                     "menu M_MiseJour\n"
                     "answer-file Kuvo.csv\n"
                     "click ChargeMiseJour.Cmd_Importation\n"
                     "answer-file Kuvo.csv\n"
                     "click ChargeMiseJour.Cmd_Importation\n"));
  return 0;
}

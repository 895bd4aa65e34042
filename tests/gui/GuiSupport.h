#pragma once

#include <QColor>
#include <QDate>
#include <QStringList>
#include <QTemporaryDir>
#include <algorithm>
#include <cmath>

#include "core/Program.h"
#include "core/Store.h"
#include "gui/QtPlatform.h"
#include "windows/Windows.h"

namespace kuvo::testing {

// Under AddressSanitizer the code runs several times slower: the time bounds
// of a few tests speak of the real build, and are not checked there.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool kTimeBoundsHold = false;
#else
inline constexpr bool kTimeBoundsHold = true;
#endif

// The Qt platform with its blocking dialogs answered at once and its end of
// program turned into an exception, so that a test can watch them.
class TestPlatform : public QtPlatform {
 public:
  using QtPlatform::QtPlatform;
  QStringList boxes;
  QStringList fatals;
  QStringList opened;  // documents the desktop's viewer was asked to show
  int MsgBox(const QString& prompt, int, const QString&) override {
    boxes << prompt;
    return Mb::AnswerOk;
  }
  void ReportFatal(int number, const QString& text) override { fatals << FatalText(number, text); }
  [[noreturn]] void EndProgram() override { throw ProgramEnd{}; }
  void OpenDocument(const QString& path) override { opened << path; }
};

// An application folder with a new store.
class AppFolder {
 public:
  AppFolder() { CreateStore(Path() + QStringLiteral("/Kuvo.Mdb"), ShippedSchema()); }
  QString Path() const { return dir_.path(); }
  void Sql(const QString& statement) {
    auto db = Database::OpenDatabase(Path() + QStringLiteral("/Kuvo.Mdb"));
    db->Execute(statement);
    db->CommitPending();
  }
  // One line of the operator's history in Kuvo.
  void AddHistory(const QString& yyyymmdd, const QList<int>& balls, int chance) {
    Sql(QStringLiteral("INSERT INTO Kuvo (date_de_tirage, boule_1, boule_2, boule_3, boule_4, "
                       "boule_5, Numero_Chance) VALUES ('%1', %2, %3, %4, %5, %6, %7)")
            .arg(yyyymmdd)
            .arg(balls[0])
            .arg(balls[1])
            .arg(balls[2])
            .arg(balls[3])
            .arg(balls[4])
            .arg(chance));
  }
  // One draw in Sorties.
  void AddDraw(const QString& iso, const QList<int>& balls, int chance) {
    Sql(QStringLiteral("INSERT INTO Sorties (DateTirage, numero1, numero2, numero3, numero4, "
                       "numero5, NumeroChance) VALUES ('%1', %2, %3, %4, %5, %6, %7)")
            .arg(iso)
            .arg(balls[0])
            .arg(balls[1])
            .arg(balls[2])
            .arg(balls[3])
            .arg(balls[4])
            .arg(chance));
  }

 private:
  QTemporaryDir dir_;
};

// A store with draws and group counts, so that every window opens on data.
inline void FillStore(AppFolder& folder) {
  const int days[] = {2, 5, 9, 12, 16, 19, 23, 26, 28};
  int n = 0;
  for (int month = 1; month <= 6; ++month)
    for (int day : days) {
      ++n;
      folder.AddDraw(
          QDate(2023, month, day).toString(Qt::ISODate),
          {n % 49 + 1, (n * 7) % 49 + 1, (n * 11) % 49 + 1, (n * 13) % 49 + 1, (n * 17) % 49 + 1},
          n % 10 + 1);
    }
  folder.Sql(QStringLiteral("INSERT INTO Groupe2 VALUES ('01,02', 3), ('02,07', 2)"));
}

// A program running on the test platform in a folder.
struct RunningProgram {
  explicit RunningProgram(const QString& folder)
      : platform(folder), program(platform, AllWindows()) {
    platform.Attach(program);
  }
  TestPlatform platform;
  Program program;
};

// Relative luminance and contrast ratio as WCAG 2 defines them.
inline double Luminance(const QColor& c) {
  auto channel = [](double v) {
    return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * channel(c.redF()) + 0.7152 * channel(c.greenF()) + 0.0722 * channel(c.blueF());
}

inline double Contrast(const QColor& a, const QColor& b) {
  const double la = Luminance(a), lb = Luminance(b);
  return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

}  // namespace kuvo::testing

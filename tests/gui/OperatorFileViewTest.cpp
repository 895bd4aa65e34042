// The operator's file chosen in the real file dialog of the import window: the
// load ends with its information message, and the base view counts the new draws.
#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

#include "GuiSupport.h"
#include "core/MDIKuvo.h"
#include "draws/ChargeMiseJour.h"
#include "gui/FormView.h"
#include "statistics/TirBase.h"

namespace kuvo::testing {
namespace {

const QString kSlice = QStringLiteral(KUVO_SOURCE_DIR "/tests/data/convert/operateur-2019.csv");

QByteArray Bytes(const QString& path) {
  QFile f(path);
  return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<none>");
}

TEST(OperatorFileView, TheDialogsChoiceEndsWithTheMessageAndTheNewCounts) {
  AppFolder folder;
  folder.AddDraw(QStringLiteral("2023-12-27"), {10, 20, 30, 40, 49}, 1);
  folder.AddDraw(QStringLiteral("2023-12-30"), {11, 21, 31, 41, 45}, 2);
  const QString chosen = folder.Path() + QStringLiteral("/Tirages.csv");
  ASSERT_TRUE(QFile::copy(kSlice, chosen));
  const QByteArray before = Bytes(chosen);

  RunningProgram run(folder.Path());
  run.program.Start();
  run.platform.Run([&run] { run.program.Win<MDIKuvo>().M_MiseJour_Click(); });
  ChargeMiseJour& w = run.program.Win<ChargeMiseJour>();
  ASSERT_TRUE(w.Loaded());
  auto* view = dynamic_cast<FormView*>(run.platform.ViewOf(w));
  ASSERT_NE(view, nullptr);
  auto* button = qobject_cast<QPushButton*>(view->WidgetOf(w.ui().Cmd_Importation));
  ASSERT_NE(button, nullptr);

  // The user picks the file in the dialog as soon as it stands.
  bool picked = false;
  std::function<void()> pick = [&] {
    for (QWidget* top : QApplication::topLevelWidgets()) {
      auto* dialog = qobject_cast<QFileDialog*>(top);
      if (!dialog || !dialog->isVisible()) continue;
      EXPECT_EQ(dialog->nameFilters(), QStringList{QStringLiteral("Tous les fichiers (*.csv)")});
      dialog->selectFile(chosen);
      static_cast<QDialog*>(dialog)->accept();  // as the Open button does
      picked = true;
      return;
    }
    QTimer::singleShot(20, pick);
  };
  QTimer::singleShot(0, pick);
  button->click();
  ASSERT_TRUE(picked);

  ASSERT_EQ(run.platform.boxes.size(), 1);
  EXPECT_EQ(run.platform.boxes[0],
            QStringLiteral("Mise à jour de la base de données réussie.\n\r40 tirages ajoutés, du "
                           "24 avril 2024 au 24 juillet 2024.\n\rAucun tirage corrigé.\n\rLa base "
                           "de données compte maintenant 42 tirages."));
  EXPECT_TRUE(run.platform.fatals.isEmpty());
  EXPECT_EQ(Bytes(chosen), before);

  // The base view, opened next, counts the 42 draws of the merged history.
  run.platform.Run([&run] { run.program.Win<MDIKuvo>().M_StatToutes_Click(); });
  TirBase& base = run.program.Win<TirBase>();
  ASSERT_TRUE(base.Loaded());
  auto* baseView = dynamic_cast<FormView*>(run.platform.ViewOf(base));
  ASSERT_NE(baseView, nullptr);
  auto* label = qobject_cast<QLabel*>(baseView->WidgetOf(base.ui().Label3));
  ASSERT_NE(label, nullptr);
  EXPECT_EQ(label->text(), QStringLiteral("  Nombre de tirages :   42  "));
  EXPECT_EQ(base.ui().Liste3.Rows(), 43);
  base.Unload();
}

}  // namespace
}  // namespace kuvo::testing

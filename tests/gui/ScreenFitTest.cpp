#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QCalendarWidget>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QStatusBar>
#include <QTableView>
#include <cstdio>

#include "GuiSupport.h"
#include "core/Avance.h"
#include "core/Form.h"
#include "gui/FormView.h"
#include "gui/MainWindowView.h"

namespace kuvo::testing {
namespace {

QString Plain(QString text) { return text.remove(QLatin1Char('&')); }

// What of a control's widget would not show: outside its parent, or a text
// larger than the widget.
QStringList Clipped(const QString& where, QWidget* w) {
  QStringList out;
  if (!w || !w->isVisibleTo(w->window())) return out;
  const QRect r = w->geometry();
  if (QWidget* parent = w->parentWidget(); parent && !parent->rect().contains(r))
    out << QStringLiteral("%1 lies outside its container").arg(where);
  const QFontMetrics fm = w->fontMetrics();
  auto wide = [&](const QString& text, int room) {
    if (fm.horizontalAdvance(text) > room)
      out << QStringLiteral("%1: \"%2\" is %3 px wide in %4 px")
                 .arg(where, text)
                 .arg(fm.horizontalAdvance(text))
                 .arg(room);
  };
  auto high = [&](int need) {
    if (need > r.height())
      out << QStringLiteral("%1 needs %2 px of height, has %3")
                 .arg(where)
                 .arg(need)
                 .arg(r.height());
  };
  if (auto* button = qobject_cast<QPushButton*>(w)) {
    wide(Plain(button->text()), r.width() - 4);
    high(fm.height() + 2);
  } else if (auto* label = qobject_cast<QLabel*>(w)) {
    const QString text = Plain(label->text());
    if (!text.trimmed().isEmpty()) {
      for (const QString& word :
           text.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts))
        wide(word, r.width());
      high(label->wordWrap() ? label->heightForWidth(r.width()) : fm.height());
    }
  } else if (auto* box = qobject_cast<QAbstractButton*>(w); box && !box->text().isEmpty()) {
    wide(Plain(box->text()), r.width() - box->iconSize().width() - 6);
    high(fm.height());
  } else if (auto* line = qobject_cast<QLineEdit*>(w)) {
    high(fm.height() + 2);
    (void)line;
  } else if (auto* combo = qobject_cast<QComboBox*>(w)) {
    high(fm.height() + 2);
    for (int i = 0; i < combo->count(); ++i) wide(combo->itemText(i), r.width() - 20);
  } else if (auto* calendar = qobject_cast<QCalendarWidget*>(w)) {
    const QSize need = calendar->minimumSizeHint();
    if (need.width() > r.width() || need.height() > r.height())
      out << QStringLiteral("%1 needs %2x%3, has %4x%5")
                 .arg(where)
                 .arg(need.width())
                 .arg(need.height())
                 .arg(r.width())
                 .arg(r.height());
  }
  return out;
}

// The problems of a shown window's controls; a control the design puts below
// the window's lower edge is out of sight on purpose and left aside.
QStringList ControlProblems(const Form& form, const FormView& view) {
  QStringList problems;
  for (Control* c : form.Controls()) {
    double top = 0;
    for (const Control* k = c; k; k = k->Container) top += k->Top;
    if (c->Kind() != ControlKind::Menu && top >= form.ScaleHeight()) continue;
    problems << Clipped(
        c->Name() + (c->Index() >= 0 ? QStringLiteral("(%1)").arg(c->Index()) : QString()),
        view.WidgetOf(*c));
  }
  return problems;
}

// Every window the program has, shown on this screen (1024x768 at 96, 120 and
// 144 DPI in the suite): it lies whole in its room, and no control is cut.
TEST(ScreenFit, EveryWindowFitsTheScreenAndNothingIsClipped) {
  const QScreen* screen = QGuiApplication::primaryScreen();
  ASSERT_NE(screen, nullptr);
  const QRect desk = screen->availableGeometry();
  std::printf("[ screen ] %dx%d logical pixels at %.0f DPI (ratio %.2f)\n", desk.width(),
              desk.height(), screen->logicalDotsPerInch() * screen->devicePixelRatio(),
              screen->devicePixelRatio());
  AppFolder folder;
  FillStore(folder);
  int shown = 0;
  for (const WindowMaker& maker : AllWindows()) {
    if (!maker.make) continue;
    const QString name = QString::fromLatin1(maker.name);
    SCOPED_TRACE(name.toStdString());
    RunningProgram run(folder.Path());
    run.program.Start();
    ASSERT_TRUE(run.platform.fatals.isEmpty());
    // The window manager maximises the main window.
    QWidget* main = run.platform.MainWidget();
    ASSERT_NE(main, nullptr);
    main->setGeometry(desk);
    QCoreApplication::processEvents();
    QStringList problems;
    if (name == QLatin1String("MDIKuvo")) {
      auto* view = dynamic_cast<MainWindowView*>(run.platform.MainWindow());
      ASSERT_NE(view, nullptr);
      QStatusBar* bar = view->statusBar();
      EXPECT_LE(bar->sizeHint().width(), desk.width()) << "the status bar's panels fit across";
      EXPECT_LE(main->minimumSizeHint().width(), desk.width());
      EXPECT_LE(main->minimumSizeHint().height(), desk.height());
      for (QLabel* panel : bar->findChildren<QLabel*>())
        problems << Clipped(QStringLiteral("status panel"), panel);
      EXPECT_TRUE(problems.isEmpty()) << problems.join(QLatin1Char('\n')).toStdString();
      ++shown;
      continue;
    }
    Form* form = run.program.FormByName(name, true);
    ASSERT_NE(form, nullptr);
    if (name == QLatin1String("Avance"))
      run.platform.Run([&run] {
        run.program.Win<Avance>().Depart(QStringLiteral("Preparation de la base de données"), 10,
                                         1);
      });
    else
      run.platform.Run([form] { form->Show(); });
    ASSERT_TRUE(run.platform.fatals.isEmpty()) << run.platform.fatals.join(' ').toStdString();
    auto* view = dynamic_cast<FormView*>(run.platform.ViewOf(*form));
    ASSERT_NE(view, nullptr);
    QWidget* frame = view->Frame();
    if (auto* sub = qobject_cast<QMdiSubWindow*>(frame)) {
      QMdiArea* area = sub->mdiArea();
      EXPECT_TRUE(area->viewport()->rect().contains(sub->geometry()))
          << "the window stands whole in the work area";
      EXPECT_FALSE(area->verticalScrollBar()->isVisible());
      EXPECT_FALSE(area->horizontalScrollBar()->isVisible());
    } else {
      EXPECT_TRUE(desk.contains(frame->frameGeometry())) << "the window stands on the screen";
    }
    problems << ControlProblems(*form, *view);
    EXPECT_TRUE(problems.isEmpty()) << problems.join(QLatin1Char('\n')).toStdString();
    std::printf("[ window ] %s: %dx%d at zoom %.3f\n", maker.name, frame->width(), frame->height(),
                view->Zoom());
    ++shown;
  }
  EXPECT_GE(shown, 5);
}

// The base view grown to its tall form, chart and scale buttons shown.
TEST(ScreenFit, TheBaseViewWithItsChartFits) {
  const QRect desk = QGuiApplication::primaryScreen()->availableGeometry();
  AppFolder folder;
  FillStore(folder);
  RunningProgram run(folder.Path());
  run.program.Start();
  run.platform.MainWidget()->setGeometry(desk);
  QCoreApplication::processEvents();
  Form* form = run.program.FormByName(QStringLiteral("TirBase"), true);
  ASSERT_NE(form, nullptr);
  run.platform.Run([form] { form->Show(); });
  run.platform.Run([form] { form->FindControl(QStringLiteral("GraphiquePlus"))->Click(); });
  EXPECT_EQ(form->Height, 9300);
  auto* view = dynamic_cast<FormView*>(run.platform.ViewOf(*form));
  ASSERT_NE(view, nullptr);
  auto* sub = qobject_cast<QMdiSubWindow*>(view->Frame());
  ASSERT_NE(sub, nullptr);
  EXPECT_TRUE(sub->mdiArea()->viewport()->rect().contains(sub->geometry()))
      << "the window stands whole in the work area";
  const QStringList problems = ControlProblems(*form, *view);
  EXPECT_TRUE(problems.isEmpty()) << problems.join(QLatin1Char('\n')).toStdString();
  for (const char* name : {"Label4", "Picture1", "Picture2", "Plus", "Moins"}) {
    QWidget* w = view->WidgetOf(*form->FindControl(QLatin1String(name)));
    ASSERT_NE(w, nullptr) << name;
    EXPECT_TRUE(view->rect().contains(QRect(w->mapTo(view, QPoint(0, 0)), w->size()))) << name;
  }
  // The grid of the ten chance numbers was drawn to hold them all: no scrolling.
  auto* chance =
      qobject_cast<QTableView*>(view->WidgetOf(*form->FindControl(QStringLiteral("Liste4"))));
  ASSERT_NE(chance, nullptr);
  QCoreApplication::processEvents();
  EXPECT_EQ(chance->model()->rowCount(), 10);
  EXPECT_EQ(chance->verticalScrollBar()->maximum(), 0) << "the ten chance numbers show whole";
  EXPECT_EQ(chance->horizontalHeader()->height(), chance->rowHeight(0));
  std::printf("[ window ] TirBase with its chart: %dx%d at zoom %.3f\n", sub->width(),
              sub->height(), view->Zoom());
  run.platform.Run([form] { form->Unload(); });
}

}  // namespace
}  // namespace kuvo::testing

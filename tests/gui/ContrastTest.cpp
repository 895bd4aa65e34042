#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QScreen>
#include <QStatusBar>
#include <QToolButton>
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "GuiSupport.h"
#include "core/Avance.h"
#include "core/Form.h"
#include "gui/FormView.h"
#include "gui/MainWindowView.h"

namespace kuvo::testing {
namespace {

// A desktop palette with every role set: a dark one as Adwaita's dark theme
// gives it, and a light one.
QPalette Desktop(bool dark) {
  QPalette p;
  const QColor window = dark ? QColor(0x35, 0x35, 0x35) : QColor(0xF6, 0xF5, 0xF4);
  const QColor text = dark ? QColor(0xEE, 0xEE, 0xEC) : QColor(0x2E, 0x34, 0x36);
  const QColor base = dark ? QColor(0x2D, 0x2D, 0x2D) : QColor(Qt::white);
  const QColor greyed = dark ? QColor(0x91, 0x91, 0x90) : QColor(0x92, 0x95, 0x95);
  for (QPalette::ColorGroup g : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
    const bool off = g == QPalette::Disabled;
    for (QPalette::ColorRole r :
         {QPalette::Window, QPalette::Button, QPalette::AlternateBase, QPalette::ToolTipBase})
      p.setColor(g, r, window);
    for (QPalette::ColorRole r : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text,
                                  QPalette::ToolTipText, QPalette::BrightText})
      p.setColor(g, r, off ? greyed : text);
    p.setColor(g, QPalette::Base, base);
    p.setColor(g, QPalette::PlaceholderText, greyed);
    p.setColor(g, QPalette::Light, window.lighter(130));
    p.setColor(g, QPalette::Midlight, window.lighter(115));
    p.setColor(g, QPalette::Mid, window.darker(130));
    p.setColor(g, QPalette::Dark, window.darker(160));
    p.setColor(g, QPalette::Shadow, Qt::black);
    p.setColor(g, QPalette::Highlight, dark ? QColor(0x15, 0x53, 0x9E) : QColor(0x35, 0x84, 0xE4));
    p.setColor(g, QPalette::HighlightedText, Qt::white);
  }
  return p;
}

// The desktop's palette for the life of a test.
class DesktopPalette {
 public:
  explicit DesktopPalette(bool dark) : saved_(QApplication::palette()) {
    QApplication::setPalette(Desktop(dark));
  }
  ~DesktopPalette() { QApplication::setPalette(saved_); }

 private:
  QPalette saved_;
};

// One text on screen and how it stands out from what is behind it.
struct Reading {
  QString where;
  QString text;
  double ratio = 0;
  bool enabled = true;
  bool fixed = false;  // its colours are the design's own, not the system's
};

QString TextOf(QWidget* w) {
  if (auto* l = qobject_cast<QLabel*>(w)) return l->text();
  // A tool button showing its picture alone draws no text.
  if (auto* t = qobject_cast<QToolButton*>(w); t && t->toolButtonStyle() == Qt::ToolButtonIconOnly)
    return {};
  if (auto* v = qobject_cast<QAbstractItemView*>(w); v && v->model() && v->model()->rowCount() > 0)
    return QStringLiteral("(cells)");
  if (auto* b = qobject_cast<QAbstractButton*>(w)) return b->text();
  if (auto* g = qobject_cast<QGroupBox*>(w)) return g->title();
  if (auto* e = qobject_cast<QLineEdit*>(w)) return e->text();
  if (auto* c = qobject_cast<QComboBox*>(w)) return c->currentText();
  if (auto* m = qobject_cast<QMenuBar*>(w)) {
    QStringList titles;
    for (QAction* a : m->actions()) titles << a->text();
    return titles.join(QLatin1Char(' '));
  }
  return {};
}

// Every text of a window measured on its rendered pixels: the window is drawn
// as it is, then with its texts in a transparent ink, and within each text
// widget the pixel that differs most from the same pixel without the text
// gives the text's contrast.
std::vector<Reading> ReadTexts(QWidget* window, const std::map<QWidget*, Reading>& known) {
  std::vector<QWidget*> texts;
  for (QWidget* w : window->findChildren<QWidget*>()) {
    if (!w->isVisible() || w->window() != window->window()) continue;
    if (TextOf(w).remove(QLatin1Char('&')).trimmed().isEmpty()) continue;
    texts.push_back(w);
  }
  const QImage with = window->grab().toImage().convertToFormat(QImage::Format_RGB32);
  std::vector<std::pair<QWidget*, QPalette>> saved;
  for (QWidget* w : texts) {
    saved.emplace_back(w, w->palette());
    QPalette clear = w->palette();
    for (QPalette::ColorGroup g : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
      for (QPalette::ColorRole r : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text,
                                    QPalette::HighlightedText, QPalette::BrightText})
        clear.setColor(g, r, Qt::transparent);
    w->setPalette(clear);
  }
  const QImage without = window->grab().toImage().convertToFormat(QImage::Format_RGB32);
  for (auto& [w, pal] : saved) w->setPalette(pal);
  const qreal dpr = with.devicePixelRatio();

  std::vector<Reading> out;
  for (QWidget* w : texts) {
    Reading r;
    if (auto it = known.find(w); it != known.end()) r = it->second;
    if (r.where.isEmpty()) r.where = QString::fromLatin1(w->metaObject()->className());
    r.text = TextOf(w);
    r.enabled = w->isEnabled();
    // The widget's rectangle within its parents', where the window shows it.
    QRect box(w->mapTo(window, QPoint(0, 0)), w->size());
    for (QWidget* p = w->parentWidget(); p && p != window; p = p->parentWidget())
      box &= QRect(p->mapTo(window, QPoint(0, 0)), p->size());
    const QRegion seen = QRegion(box & window->rect());
    double best = 1;
    bool inSight = false;
    for (const QRect& rect : seen) {
      const QRect px(QPointF(rect.topLeft() * dpr).toPoint(), QSizeF(rect.size() * dpr).toSize());
      for (int y = px.top(); y <= px.bottom() && y < with.height(); ++y)
        for (int x = px.left(); x <= px.right() && x < with.width(); ++x) {
          inSight = true;
          const QRgb a = with.pixel(x, y), b = without.pixel(x, y);
          if (a != b) best = std::max(best, Contrast(QColor(a), QColor(b)));
        }
    }
    // Below the window's lower edge, out of sight by design; or a table whose
    // cells are all empty.
    if (!inSight || (best == 1 && qobject_cast<QAbstractItemView*>(w))) continue;
    r.ratio = best;
    out.push_back(r);
  }
  return out;
}

// What each control's widget is, and whether the design fixes its colours.
std::map<QWidget*, Reading> Known(const Form& form, const FormView& view) {
  std::map<QWidget*, Reading> known;
  for (Control* c : form.Controls()) {
    QWidget* w = view.WidgetOf(*c);
    if (!w) continue;
    Reading r;
    r.where = QStringLiteral("%1.%2").arg(form.Name(), c->FullName());
    if (c->Kind() == ControlKind::Label) {
      const auto* l = static_cast<const Label*>(c);
      r.fixed = l->ForeColor != Colours::Black || l->BackColor != Colours::ButtonFace;
    }
    known[w] = r;
  }
  return known;
}

// Every reading of a window under one desktop palette, with what fails: a
// text under 4.5:1, or under 3:1 where the design fixes its colours.
QStringList Failures(const std::vector<Reading>& readings, const char* desktop, int& count,
                     double& worst) {
  QStringList failures;
  for (const Reading& r : readings) {
    ++count;
    worst = std::min(worst, r.ratio);
    const double floor = r.fixed ? 3.0 : 4.5;
    if (r.ratio < floor)
      failures << QStringLiteral("%1 (%2) \"%3\": %4:1 on the %5 desktop")
                      .arg(r.where,
                           r.enabled ? QStringLiteral("enabled") : QStringLiteral("disabled"),
                           r.text)
                      .arg(r.ratio, 0, 'f', 2)
                      .arg(QLatin1String(desktop));
  }
  return failures;
}

// Opens a window of the program as the user gets it, with data in the store.
FormView* Open(RunningProgram& run, const QString& name) {
  Form* form = run.program.FormByName(name, true);
  if (!form) return nullptr;
  if (name == QLatin1String("Avance"))
    run.platform.Run([&run] {
      run.program.Win<Avance>().Depart(QStringLiteral("Preparation de la base de données"), 10, 1);
    });
  else
    run.platform.Run([form] { form->Show(); });
  return dynamic_cast<FormView*>(run.platform.ViewOf(*form));
}

class ContrastTest : public ::testing::TestWithParam<bool> {};

// Every window on a dark and on a light desktop: each text of its labels,
// buttons and boxes stands out from what is behind it.
TEST_P(ContrastTest, EveryTextOfEveryWindowReads) {
  const bool dark = GetParam();
  const char* desktop = dark ? "dark" : "light";
  DesktopPalette palette(dark);
  AppFolder folder;
  FillStore(folder);
  int count = 0, windows = 0;
  double worst = 100;
  QStringList failures;
  for (const WindowMaker& maker : AllWindows()) {
    if (!maker.make) continue;
    const QString name = QString::fromLatin1(maker.name);
    SCOPED_TRACE(name.toStdString());
    RunningProgram run(folder.Path());
    run.program.Start();
    ASSERT_TRUE(run.platform.fatals.isEmpty());
    QWidget* main = run.platform.MainWidget();
    main->setGeometry(QGuiApplication::primaryScreen()->availableGeometry());
    QCoreApplication::processEvents();
    std::vector<Reading> readings;
    if (name == QLatin1String("MDIKuvo")) {
      std::map<QWidget*, Reading> known;
      auto* view = dynamic_cast<MainWindowView*>(run.platform.MainWindow());
      known[view->menuBar()].where = QStringLiteral("MDIKuvo menu bar");
      for (QLabel* panel : view->statusBar()->findChildren<QLabel*>())
        known[panel].where = QStringLiteral("MDIKuvo status panel");
      readings = ReadTexts(main, known);
    } else {
      FormView* view = Open(run, name);
      ASSERT_NE(view, nullptr);
      readings = ReadTexts(view, Known(view->TheForm(), *view));
    }
    EXPECT_FALSE(readings.empty());
    // Every reading, for whoever looks into a failure.
    if (qEnvironmentVariableIsSet("KUVO_SHOW_CONTRAST"))
      for (const Reading& r : readings)
        std::printf("  %s \"%s\" %.2f%s\n", qPrintable(r.where), qPrintable(r.text), r.ratio,
                    r.fixed ? " (design)" : "");
    failures << Failures(readings, desktop, count, worst);
    ++windows;
  }
  std::printf("[ contrast ] %s desktop: %d texts in %d windows, the lowest at %.2f:1\n", desktop,
              count, windows, worst);
  EXPECT_GE(windows, 14);
  EXPECT_TRUE(failures.isEmpty()) << failures.size() << " texts too faint:\n"
                                  << failures.join(QLatin1Char('\n')).toStdString();
}

INSTANTIATE_TEST_SUITE_P(Desktops, ContrastTest, ::testing::Values(true, false),
                         [](const ::testing::TestParamInfo<bool>& info) {
                           return std::string(info.param ? "Dark" : "Light");
                         });

}  // namespace
}  // namespace kuvo::testing

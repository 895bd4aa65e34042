#include "gui/Accessible.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QVariant>
#include <QWidget>

namespace kuvo::accessible {

namespace {

constexpr const char* kRole = "kuvoAccessibleRole";
constexpr const char* kCheckable = "kuvoKeyCheckable";
constexpr const char* kChecked = "kuvoKeyChecked";
constexpr const char* kCursor = "kuvoCursorKey";

QWidget* CursorKey(const QWidget* keypad) {
  return qobject_cast<QWidget*>(keypad->property(kCursor).value<QObject*>());
}

// A widget of the program in the role it was given; a keypad says which of
// its keys has the focus.
class RoleAccessible : public QAccessibleWidget {
 public:
  RoleAccessible(QWidget* w, QAccessible::Role role) : QAccessibleWidget(w, role) {}
  QAccessibleInterface* focusChild() const override {
    if (QWidget* key = CursorKey(widget()); key && widget()->hasFocus())
      return QAccessible::queryAccessibleInterface(key);
    return QAccessibleWidget::focusChild();
  }
  // A widget drawn as a button is pressed as Space on it would.
  QStringList actionNames() const override {
    if (role() == QAccessible::Button && widget()->isEnabled()) return {pressAction()};
    return QAccessibleWidget::actionNames();
  }
  void doAction(const QString& name) override {
    if (role() != QAccessible::Button || name != pressAction()) {
      QAccessibleWidget::doAction(name);
      return;
    }
    QKeyEvent press(QEvent::KeyPress, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "));
    QCoreApplication::sendEvent(widget(), &press);
    QKeyEvent release(QEvent::KeyRelease, Qt::Key_Space, Qt::NoModifier, QStringLiteral(" "));
    QCoreApplication::sendEvent(widget(), &release);
  }
};

// A keypad key, pressed as a click would, focused while it is under the cursor
// of a focused keypad. A number key is a check box, checked as its face shows:
// the desktop's bridge tells a reader the checked state of a check box, and
// not of a button.
class KeyAccessible : public QAccessibleWidget {
 public:
  explicit KeyAccessible(QWidget* w) : QAccessibleWidget(w, QAccessible::Button) {}
  QAccessible::Role role() const override {
    return widget()->property(kCheckable).toBool() ? QAccessible::CheckBox : QAccessible::Button;
  }
  QAccessible::State state() const override {
    QAccessible::State s = QAccessibleWidget::state();
    s.checkable = widget()->property(kCheckable).toBool();
    s.checked = s.checkable && widget()->property(kChecked).toBool();
    s.focusable = true;
    const QWidget* pad = widget()->parentWidget();
    s.focused = pad && pad->hasFocus() && CursorKey(pad) == widget();
    return s;
  }
  QStringList actionNames() const override {
    if (!widget()->isEnabled()) return {};
    if (widget()->property(kCheckable).toBool()) return {toggleAction(), pressAction()};
    return {pressAction()};
  }
  void doAction(const QString& name) override {
    if (name != pressAction() && name != toggleAction()) return;
    if (auto* b = qobject_cast<QAbstractButton*>(widget())) b->click();
  }
  QStringList keyBindingsForAction(const QString&) const override { return {}; }
};

QAccessibleInterface* Factory(const QString& className, QObject* object) {
  auto* w = qobject_cast<QWidget*>(object);
  if (!w) return nullptr;
  if (className == QLatin1String("kuvo::KeyButton")) return new KeyAccessible(w);
  const QVariant role = w->property(kRole);
  if (role.isValid() && className == QLatin1String(w->metaObject()->className()))
    return new RoleAccessible(w, static_cast<QAccessible::Role>(role.toInt()));
  return nullptr;
}

}  // namespace

void Install() {
  static const bool installed = [] {
    QAccessible::installFactory(&Factory);
    return true;
  }();
  (void)installed;
}

void SetRole(QWidget* w, QAccessible::Role role) {
  Install();
  w->setProperty(kRole, static_cast<int>(role));
}

void SetKey(QWidget* key, bool checkable, bool checked) {
  Install();
  const bool known = key->property(kCheckable).isValid();
  const bool was = key->property(kChecked).toBool();
  key->setProperty(kCheckable, checkable);
  key->setProperty(kChecked, checked);
  if (known && was != checked && checkable) {
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent event(key, changed);
    QAccessible::updateAccessibility(&event);
  }
}

void SetCursorKey(QWidget* keypad, QWidget* key) {
  keypad->setProperty(kCursor, QVariant::fromValue<QObject*>(key));
}

void AnnounceCursorKey(QWidget* keypad) {
  QWidget* key = CursorKey(keypad);
  if (!key || !keypad->hasFocus()) return;
  QAccessibleEvent event(key, QAccessible::Focus);
  QAccessible::updateAccessibility(&event);
}

}  // namespace kuvo::accessible

#pragma once

#include <QAccessible>
#include <QString>
#include <QToolButton>

class QWidget;

namespace kuvo {

// A key of a keypad: a tool button that a screen reader knows as a key from
// the moment it is made.
class KeyButton : public QToolButton {
  Q_OBJECT

 public:
  using QToolButton::QToolButton;
};

}  // namespace kuvo

// What the views tell a screen reader beyond what Qt's widgets say of
// themselves: the role of a widget drawn by the program, the keys of a keypad
// with their checked state, and which key of a keypad has the focus.
namespace kuvo::accessible {

// Makes Qt ask the program first for the interfaces of the widgets below;
// done once, whatever the number of calls.
void Install();

// A widget drawn by the program (a picture, a drawing area, a keypad) takes
// this role instead of a plain client area.
void SetRole(QWidget* w, QAccessible::Role role);

// A keypad key: a button that a screen reader can press; a number key is a
// check box, checked while its face shows it marked. Tells the reader when the
// checked state changes.
void SetKey(QWidget* key, bool checkable, bool checked);

// The key of a keypad under its keyboard cursor (null for none): while the
// keypad has the focus, that key is the focused object.
void SetCursorKey(QWidget* keypad, QWidget* key);
// Tells the reader that the cursor's key took the focus.
void AnnounceCursorKey(QWidget* keypad);

}  // namespace kuvo::accessible

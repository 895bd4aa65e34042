#pragma once

#include <QDate>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <deque>
#include <functional>
#include <vector>

#include "core/Errors.h"
#include "core/Property.h"

// The controls of a window as plain state objects. A window builds them from its
// design at every load and drops them at unload; the views render them and the
// scenario driver reads them by name.
namespace kuvo {

class Form;

enum class ControlKind {
  Label,
  CommandButton,
  TextBox,
  ComboBox,
  ListBox,
  OptionButton,
  CheckBox,
  Frame,
  PictureBox,
  DrawingArea,
  Image,
  Line,
  Grid,
  Toolbar,
  StatusBar,
  ProgressBar,
  Calendar,
  Timer,
  CommonDialog,
  Menu,
};

// Colours as the program keeps them: blue-green-red.
namespace Colours {
constexpr unsigned Black = 0x000000;
constexpr unsigned White = 0xFFFFFF;
constexpr unsigned Red = 0x0000FF;
constexpr unsigned Yellow = 0x00FFFF;
constexpr unsigned Teal = 0x808000;
constexpr unsigned ButtonFace = 0xC0C0C0;
constexpr unsigned WindowBackground = 0xFFFFFF;
}  // namespace Colours

class Control {
 public:
  Control(Form& form, ControlKind kind, QString name, int index = -1);
  virtual ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  Form& Parent() const { return form_; }
  ControlKind Kind() const { return kind_; }
  const QString& Name() const { return name_; }
  int Index() const { return index_; }
  // "Label12(0)" for a member of a control array, else the name.
  QString FullName() const;

  // Every property an observer can read, with its name as a script writes it.
  void Describe(const PropertySink& sink) const;

  // Gives the focus to this control; a control that can't take it refuses it
  // with error 5, as the platform does.
  void SetFocus();
  // Pushes the control's state to the screen at once.
  void Refresh();
  // What the user does to a control. The views and the scenario driver both
  // come through these, so that a scenario runs the path of the real program.
  // A click raises Click; option buttons, check boxes, grids and toolbars
  // have their own.
  virtual void UserClick();
  void UserDblClick();
  // A key typed on the control: KeyPress sees it first and may change it or
  // take it away (0). Returns what it left, which the control then takes.
  Int16 UserKey(Int16 keyAscii);
  void UserMouseDown(Int16 button, Int16 shift, double x, double y);
  void UserMouseUp(Int16 button, Int16 shift, double x, double y);
  void UserMouseMove(Int16 button, Int16 shift, double x, double y);
  // The user put the focus on the control: it becomes its window's active one.
  void UserFocus();

  // Sets position and size at once, in twips.
  void Move(int left, int top, int width, int height) {
    Left = left;
    Top = top;
    Width = width;
    Height = height;
  }
  // True when it can take the focus: loaded, shown, enabled, up the containers.
  bool Focusable() const;
  // True when a user could act on it: focusable, and not below the window's
  // lower edge.
  bool Reachable() const;

  bool Enabled = true;
  bool Visible = true;
  int Left = 0, Top = 0, Width = 0, Height = 0;  // twips
  QString ToolTipText;
  Control* Container = nullptr;  // the frame or picture holding it, if any

  // Events, bound by the window's design to its handlers.
  std::function<void()> Click;
  std::function<void()> DblClick;
  std::function<void()> Change;
  std::function<void(Int16& keyAscii)> KeyPress;
  std::function<void(Int16 button, Int16 shift, double x, double y)> MouseDown, MouseUp, MouseMove;

 protected:
  virtual void DescribeOwn(const PropertySink& sink) const = 0;

 private:
  Form& form_;
  ControlKind kind_;
  QString name_;
  int index_;
};

class Label : public Control {
 public:
  Label(Form& f, QString name, int index = -1) : Control(f, ControlKind::Label, name, index) {}
  QString Caption;
  unsigned BackColor = Colours::ButtonFace;
  unsigned ForeColor = Colours::Black;
  bool FontBold = false;
  double FontSize = 8.25;
  int Alignment = 0;  // 0 left, 1 right, 2 centre

 protected:
  void DescribeOwn(const PropertySink& sink) const override;
};

class CommandButton : public Control {
 public:
  CommandButton(Form& f, QString name, int index = -1)
      : Control(f, ControlKind::CommandButton, name, index) {}
  QString Caption;

 protected:
  void DescribeOwn(const PropertySink& sink) const override;
};

class TextBox : public Control {
 public:
  TextBox(Form& f, QString name, int index = -1) : Control(f, ControlKind::TextBox, name, index) {}
  QString Text;
  bool MultiLine = false;
  bool Locked = false;
  // The text as the user's typing left it: Text follows, then Change.
  void UserType(const QString& text);
  // A key typed at the end of the text, as the scenario driver types: what
  // KeyPress lets through goes into the text (a backspace takes the last
  // character), then Change. A locked box takes nothing.
  void UserKeyAtEnd(Int16 keyAscii);

 protected:
  void DescribeOwn(const PropertySink& sink) const override;
};

// Combo and list boxes. A combo of style 2 is list-only: its text follows the pick.
class ListControl : public Control {
 public:
  ListControl(Form& f, ControlKind kind, QString name, int index) : Control(f, kind, name, index) {}
  void AddItem(const QString& item);
  void RemoveItem(int index);
  void Clear();
  int ListCount() const { return static_cast<int>(List.size()); }
  int ListIndex() const { return listIndex_; }
  // Picks item `index` (-1 for none) and raises Click when the pick changes,
  // as the platform does for a pick made in code; an index outside the list
  // raises error 380.
  void SetListIndex(int index);
  // The item's text, or "" for the current pick -1.
  QString Item(int index) const;
  // A pick by the user: ListIndex and Text follow, then Click, even when the
  // item was already the one chosen.
  void UserPick(int index);
  // A mouse press by the user on item `index` (-1 for none, below the items):
  // the pick moves there first, with Click when it changed, then MouseDown.
  void UserPress(int index, Int16 button, Int16 shift, double x, double y);
  // Text typed in an editable combo: Text follows, then Change.
  void UserType(const QString& text);

  QStringList List;
  QString Text;
  int Style = 0;  // combo: 0 editable, 2 list only
  bool Sorted = false;

 protected:
  void DescribeOwn(const PropertySink& sink) const override;
  int listIndex_ = -1;
};

class ComboBox : public ListControl {
 public:
  ComboBox(Form& f, QString name, int index = -1)
      : ListControl(f, ControlKind::ComboBox, name, index) {}
};

class ListBox : public ListControl {
 public:
  ListBox(Form& f, QString name, int index = -1)
      : ListControl(f, ControlKind::ListBox, name, index) {}
};

class OptionButton : public Control {
 public:
  OptionButton(Form& f, QString name, int index = -1)
      : Control(f, ControlKind::OptionButton, name, index) {}
  QString Caption;
  bool Value = false;
  // Sets the value; setting it to true clears the other options of the same
  // container and raises Click, as the platform does.
  void SetValue(bool value);
  // A click by the user: the option goes on, the others of its container off,
  // then Click, even when it was already on.
  void UserClick() override;

 protected:
  void DescribeOwn(const PropertySink& sink) const override;
};

class CheckBox : public Control {
 public:
  CheckBox(Form& f, QString name, int index = -1)
      : Control(f, ControlKind::CheckBox, name, index) {}
  QString Caption;
  int Value = 0;  // 0 unchecked, 1 checked
  // A click by the user: the box turns over, then Click.
  void UserClick() override;

 protected:
  void DescribeOwn(const PropertySink& sink) const override;
};

// A frame or a panel that holds other controls; disabling it disables them.
class Frame : public Control {
 public:
  Frame(Form& f, QString name, int index = -1) : Control(f, ControlKind::Frame, name, index) {}
  QString Caption;

 protected:
  void DescribeOwn(const PropertySink& sink) const override;
};

class PictureBox : public Control {
 public:
  PictureBox(Form& f, QString name, int index = -1)
      : Control(f, ControlKind::PictureBox, name, index) {}
  int Picture = -1;  // the cell of the picture shown, from 0; -1 for none
  unsigned BackColor = Colours::ButtonFace;

 protected:
  void DescribeOwn(const PropertySink& sink) const override;
};

// The colour numbered 0..15 in the platform's 16-colour palette, blue-green-red:
// 10 is light green (00FF00), 13 light magenta (FF00FF). Another number raises
// error 5.
unsigned QBColor(int colour);

// Units of a drawing area's scale.
namespace Scale {
constexpr int Twips = 1;
constexpr int Points = 2;
constexpr int Pixels = 3;
constexpr int Inches = 5;
constexpr int Millimetres = 6;
constexpr int Centimetres = 7;
}  // namespace Scale

// A picture used as a drawing area: what the program draws on it, in the
// area's own unit, is kept in drawing order until the next Cls, so that a view
// can paint it again whenever the area is uncovered. A box reaching past an
// edge is kept whole; the view cuts it off.
class DrawingArea : public Control {
 public:
  DrawingArea(Form& f, QString name, int index = -1)
      : Control(f, ControlKind::DrawingArea, name, index) {}

  // One filled box as drawn, corners in the area's unit.
  struct Box {
    double x1, y1, x2, y2;
    unsigned colour;
  };

  int ScaleMode = Scale::Twips;
  int BorderStyle = 0;  // 0 none, 1 a fixed single border inside the size
  unsigned BackColor = Colours::WindowBackground;

  // Twips in one unit of the scale.
  double TwipsPerUnit() const;
  // The inner size (the size less the border) in the area's unit.
  double ScaleWidth() const;
  double ScaleHeight() const;
  // The border's thickness on each side, in twips.
  int BorderTwips() const { return BorderStyle ? 30 : 0; }

  // Clears the drawing.
  void Cls();
  // Line (x1, y1)-(x2, y2), colour, BF: a box filled with the colour.
  void LineBF(double x1, double y1, double x2, double y2, unsigned colour);

  const std::vector<Box>& Boxes() const { return boxes_; }
  // Raised by every change of the drawing, for the view.
  int Revision() const { return revision_; }

 protected:
  void DescribeOwn(const PropertySink& sink) const override;

 private:
  std::vector<Box> boxes_;
  int revision_ = 0;
};

class Image : public Control {
 public:
  Image(Form& f, QString name, int index = -1) : Control(f, ControlKind::Image, name, index) {}
  int Picture = 0;

 protected:
  void DescribeOwn(const PropertySink& sink) const override;
};

class Line : public Control {
 public:
  Line(Form& f, QString name, int index = -1) : Control(f, ControlKind::Line, name, index) {}
  int X1 = 0, Y1 = 0, X2 = 0, Y2 = 0;
  unsigned BorderColor = Colours::Black;

 protected:
  void DescribeOwn(const PropertySink& sink) const override;
};

// A grid of texts (MSFlexGrid): rows and columns from 0, fixed ones first.
class Grid : public Control {
 public:
  Grid(Form& f, QString name, int index = -1);
  int Rows() const { return rows_; }
  int Cols() const { return cols_; }
  void SetRows(int rows);
  void SetCols(int cols);
  int FixedRows = 1;
  int FixedCols = 1;
  int Row = 1;
  int Col = 1;
  // The design's fixed columns: the current cell starts on the first column
  // that is not fixed.
  void SetFixedCols(int cols) {
    FixedCols = cols;
    Col = cols;
  }
  QString TextMatrix(int row, int col) const;
  void SetTextMatrix(int row, int col, const QString& text);
  // The cell at Row, Col.
  QString Text() const { return TextMatrix(Row, Col); }
  void SetText(const QString& text) { SetTextMatrix(Row, Col, text); }
  int ColWidth(int col) const;
  void SetColWidth(int col, int twips);
  // Column headers "a|b|c" in row 0; sets the column count when it has more.
  QString FormatString() const { return formatString_; }
  void SetFormatString(const QString& format);
  // Empties every cell, fixed ones included.
  void Clear();
  // Adds a row at the end, its cells from `item` split at tabs.
  void AddItem(const QString& item);
  // Takes row `row` away; the last row that is not fixed cannot go (error 30015).
  void RemoveItem(int row);
  // Raised by every change, so that a view can tell what to redraw.
  int Revision() const { return revision_; }
  // A click by the user on a cell: Row and Col go there, then Click. A click
  // on a fixed row or column raises Click and moves neither.
  void UserClick(int row, int col);
  using Control::UserClick;

 protected:
  void DescribeOwn(const PropertySink& sink) const override;

 private:
  void CheckCell(int row, int col) const;
  int rows_ = 2, cols_ = 2;
  std::vector<QString> cells_;
  std::vector<int> colWidths_;
  QString formatString_;
  int revision_ = 0;
};

struct ToolbarButton {
  QString Key;
  int Image = 0;
  QString ToolTipText;
  int Style = 0;  // 0 button, 3 separator
  int Value = 0;  // 1 pressed
  bool Visible = true;
  bool Enabled = true;
  int Index = 0;  // from 1
};

// A toolbar of picture buttons. A keypad is one whose keys "N1".."Nn" show
// image k plain and image k + 50 marked.
class Toolbar : public Control {
 public:
  Toolbar(Form& f, QString name, int index = -1) : Control(f, ControlKind::Toolbar, name, index) {}
  // Buttons from 1; an index outside raises error 35600 as the control does.
  ToolbarButton& Buttons(int index);
  const ToolbarButton& Buttons(int index) const;
  ToolbarButton& Buttons(const QString& key);
  int ButtonCount() const { return static_cast<int>(buttons_.size()); }
  ToolbarButton& AddButton(const QString& key = {}, int image = 0, int style = 0);
  // Fills the toolbar with the keys "N1".."Nn", key k on image k.
  void MakeKeypad(int keys);
  bool IsKeypad = false;
  int Revision = 0;  // raised by every change, for the view
  // A click by the user on button `index`, from 1: ButtonClick with it. A
  // separator or a disabled button runs nothing.
  void UserClick(int index);
  using Control::UserClick;

  std::function<void(ToolbarButton& button)> ButtonClick;

 protected:
  void DescribeOwn(const PropertySink& sink) const override;

 private:
  std::deque<ToolbarButton> buttons_;
};

// A keypad key shows image k plain and image k + KeypadMarked marked.
constexpr int KeypadMarked = 50;

// The number of a keypad key: its text key without the first character, read as
// a number and rounded to a 16-bit integer ("N7" -> 7).
Int16 KeyNumber(const ToolbarButton& button);

class StatusBar : public Control {
 public:
  StatusBar(Form& f, QString name, int index = -1)
      : Control(f, ControlKind::StatusBar, name, index) {}
  struct Panel {
    QString Text;
  };
  // Panels from 1.
  Panel& Panels(int index);
  const Panel& Panels(int index) const;
  void SetPanelCount(int count) { panels_.resize(count); }
  int PanelCount() const { return static_cast<int>(panels_.size()); }

 protected:
  void DescribeOwn(const PropertySink& sink) const override;

 private:
  std::vector<Panel> panels_{1};
};

class ProgressBar : public Control {
 public:
  ProgressBar(Form& f, QString name, int index = -1)
      : Control(f, ControlKind::ProgressBar, name, index) {}
  double Min() const { return min_; }
  double Max() const { return max_; }
  double Value() const { return value_; }
  // A maximum not above the minimum, or a value outside them, raises error 380.
  void SetMax(double max);
  void SetValue(double value);

 protected:
  void DescribeOwn(const PropertySink& sink) const override;

 private:
  double min_ = 0, max_ = 100, value_ = 0;
};

// A month calendar. Its value is a day, or empty (no day chosen).
class Calendar : public Control {
 public:
  Calendar(Form& f, QString name, int index = -1);
  QDate Value() const { return value_; }  // invalid when empty
  void SetValue(const QDate& value);      // an invalid date empties it
  int Day() const { return shown_.day(); }
  int Month() const { return shown_.month(); }
  int Year() const { return shown_.year(); }
  void SetDay(int day);
  void SetMonth(int month);
  void SetYear(int year);
  // A day picked by the user: it becomes the value, then Click.
  void UserPick(const QDate& day);
  // The month on show.
  QDate Shown() const { return shown_; }

 protected:
  void DescribeOwn(const PropertySink& sink) const override;

 private:
  QDate value_;
  QDate shown_;
};

class Timer : public Control {
 public:
  Timer(Form& f, QString name, int index = -1) : Control(f, ControlKind::Timer, name, index) {}
  int Interval = 0;  // milliseconds
  std::function<void()> Tick;

 protected:
  void DescribeOwn(const PropertySink& sink) const override;
};

// The file-open and printer set-up dialogs.
class CommonDialog : public Control {
 public:
  CommonDialog(Form& f, QString name, int index = -1)
      : Control(f, ControlKind::CommonDialog, name, index) {}
  QString Filter;
  QString FileName;
  int Flags = 0;
  // Shows the file-open dialog; FileName is "" when the user cancelled.
  void ShowOpen();
  // Setting Action: 1 file-open, 5 printer set-up.
  void SetAction(int action);

 protected:
  void DescribeOwn(const PropertySink& sink) const override;
};

// A menu entry.
class Menu : public Control {
 public:
  Menu(Form& f, QString name, int index = -1) : Control(f, ControlKind::Menu, name, index) {}
  QString Caption;
  bool Checked = false;
  Menu* ParentMenu = nullptr;  // null for an entry of the menu bar

 protected:
  void DescribeOwn(const PropertySink& sink) const override;
};

// A control array: members reached by index, as Label12(0) .. Label12(5).
template <class C>
class ControlArray {
 public:
  ControlArray(Form& f, const QString& name, int first, int last) {
    for (int i = first; i <= last; ++i) items_.emplace_back(f, name, i);
    first_ = first;
  }
  C& operator()(int index) {
    const int at = index - first_;
    if (at < 0 || at >= static_cast<int>(items_.size())) Raise(340, ElementMissing(index));
    return items_[static_cast<size_t>(at)];
  }
  int LBound() const { return first_; }
  int UBound() const { return first_ + static_cast<int>(items_.size()) - 1; }

 private:
  static QString ElementMissing(int index) {
    return QStringLiteral("L'élément %1 du groupe de contrôles n'existe pas").arg(index);
  }
  std::deque<C> items_;
  int first_ = 0;
};

}  // namespace kuvo

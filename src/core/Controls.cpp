#include "core/Controls.h"

#include "core/Form.h"
#include "core/Platform.h"
#include "core/Program.h"
#include "core/Texts.h"

namespace kuvo {

namespace {
constexpr int kToolbarIndexError = 35600;
constexpr int kGridIndexError = 381;
constexpr int kLastRowError = 30015;

QString Indexed(const QString& name, int i) { return QStringLiteral("%1(%2)").arg(name).arg(i); }
}  // namespace

Control::Control(Form& form, ControlKind kind, QString name, int index)
    : form_(form), kind_(kind), name_(std::move(name)), index_(index) {
  form_.Register(this);
}

Control::~Control() { form_.Unregister(this); }

QString Control::FullName() const { return index_ < 0 ? name_ : Indexed(name_, index_); }

void Control::Describe(const PropertySink& sink) const {
  sink(QStringLiteral("Enabled"), PropValue::Bool(Enabled));
  sink(QStringLiteral("Visible"), PropValue::Bool(Visible));
  sink(QStringLiteral("Left"), PropValue::Int(Left));
  sink(QStringLiteral("Top"), PropValue::Int(Top));
  sink(QStringLiteral("Width"), PropValue::Int(Width));
  sink(QStringLiteral("Height"), PropValue::Int(Height));
  if (!ToolTipText.isEmpty()) sink(QStringLiteral("ToolTipText"), PropValue::Text(ToolTipText));
  DescribeOwn(sink);
}

bool Control::Focusable() const {
  if (!form_.Loaded() || !form_.Visible || !form_.Enabled) return false;
  // A child window goes out of sight with the main window.
  if (form_.MDIChild) {
    const Form* main = form_.App().MainFormIfMade();
    if (!main || !main->Visible) return false;
  }
  for (const Control* c = this; c; c = c->Container)
    if (!c->Enabled || !c->Visible) return false;
  return true;
}

bool Control::Reachable() const {
  if (!Focusable()) return false;
  // A control lying below the window's lower edge is out of sight and reach.
  double top = 0;
  for (const Control* c = this; c; c = c->Container) top += c->Top;
  return kind_ == ControlKind::Menu || top < form_.ScaleHeight();
}

void Control::SetFocus() {
  if (!Focusable()) Raise(Err::InvalidCall);
  form_.ActiveControl = this;
  form_.Sys().FocusChanged(*this);
}

void Control::Refresh() { form_.Sys().RefreshControl(*this); }

void Control::UserClick() {
  if (Click) Click();
}

void Control::UserDblClick() {
  if (DblClick) DblClick();
}

Int16 Control::UserKey(Int16 keyAscii) {
  if (KeyPress) KeyPress(keyAscii);
  return keyAscii;
}

void Control::UserMouseDown(Int16 button, Int16 shift, double x, double y) {
  if (MouseDown) MouseDown(button, shift, x, y);
}

void Control::UserMouseUp(Int16 button, Int16 shift, double x, double y) {
  if (MouseUp) MouseUp(button, shift, x, y);
}

void Control::UserMouseMove(Int16 button, Int16 shift, double x, double y) {
  if (MouseMove) MouseMove(button, shift, x, y);
}

void Control::UserFocus() { form_.ActiveControl = this; }

void Label::DescribeOwn(const PropertySink& sink) const {
  sink(QStringLiteral("Caption"), PropValue::Text(Caption));
  sink(QStringLiteral("BackColor"), PropValue::Colour(BackColor));
  sink(QStringLiteral("ForeColor"), PropValue::Colour(ForeColor));
}

void CommandButton::DescribeOwn(const PropertySink& sink) const {
  sink(QStringLiteral("Caption"), PropValue::Text(Caption));
}

void TextBox::DescribeOwn(const PropertySink& sink) const {
  sink(QStringLiteral("Text"), PropValue::Text(Text));
}

void TextBox::UserType(const QString& text) {
  Text = text;
  if (Change) Change();
}

void TextBox::UserKeyAtEnd(Int16 keyAscii) {
  const Int16 key = UserKey(keyAscii);
  if (key == 0 || Locked) return;
  if (key == 8) {
    if (!Text.isEmpty()) UserType(Text.chopped(1));
  } else if (key >= 32) {
    UserType(Text + QChar(key));
  }
}

void ListControl::AddItem(const QString& item) {
  if (Sorted) {
    int at = 0;
    while (at < List.size() && QString::compare(List[at], item, Qt::CaseInsensitive) <= 0) ++at;
    List.insert(at, item);
  } else {
    List.append(item);
  }
}

void ListControl::RemoveItem(int index) {
  if (index < 0 || index >= List.size()) Raise(Err::InvalidCall);
  List.removeAt(index);
  if (listIndex_ == index) {
    listIndex_ = -1;
    if (Style == 2 || Kind() == ControlKind::ListBox) Text.clear();
  } else if (listIndex_ > index) {
    --listIndex_;
  }
}

void ListControl::Clear() {
  List.clear();
  listIndex_ = -1;
  Text.clear();
}

void ListControl::SetListIndex(int index) {
  if (index < -1 || index >= List.size()) Raise(Err::InvalidPropertyValue);
  const bool changed = index != listIndex_;
  listIndex_ = index;
  Text =
      index < 0 ? (Kind() == ControlKind::ComboBox && Style == 0 ? Text : QString()) : List[index];
  if (changed && Click) Click();
}

QString ListControl::Item(int index) const {
  if (index == -1) return {};
  if (index < 0 || index >= List.size()) Raise(381);
  return List[index];
}

void ListControl::UserPick(int index) {
  const int before = listIndex_;
  SetListIndex(index);
  if (before == index && listIndex_ == index && Click) Click();
}

void ListControl::UserPress(int index, Int16 button, Int16 shift, double x, double y) {
  Form& form = Parent();
  const int generation = form.Generation();
  if (index >= 0) SetListIndex(index);
  // Click may have unloaded the window, and this control with it.
  if (!form.Loaded() || form.Generation() != generation) return;
  if (MouseDown) MouseDown(button, shift, x, y);
}

void ListControl::UserType(const QString& text) {
  Text = text;
  if (Change) Change();
}

void ListControl::DescribeOwn(const PropertySink& sink) const {
  sink(QStringLiteral("Text"), PropValue::Text(Text));
  sink(QStringLiteral("ListCount"), PropValue::Int(List.size()));
  sink(QStringLiteral("ListIndex"), PropValue::Int(listIndex_));
  for (int i = 0; i < List.size(); ++i)
    sink(Indexed(QStringLiteral("List"), i), PropValue::Text(List[i]));
}

void OptionButton::SetValue(bool value) {
  if (!value) {
    Value = false;
    return;
  }
  for (Control* c : Parent().Controls()) {
    if (c != this && c->Kind() == ControlKind::OptionButton && c->Container == Container)
      static_cast<OptionButton*>(c)->Value = false;
  }
  const bool was = Value;
  Value = true;
  if (!was && Click) Click();
}

void OptionButton::UserClick() {
  for (Control* c : Parent().Controls())
    if (c != this && c->Kind() == ControlKind::OptionButton && c->Container == Container)
      static_cast<OptionButton*>(c)->Value = false;
  Value = true;
  if (Click) Click();
}

void OptionButton::DescribeOwn(const PropertySink& sink) const {
  sink(QStringLiteral("Caption"), PropValue::Text(Caption));
  sink(QStringLiteral("Value"), PropValue::Bool(Value));
}

void CheckBox::UserClick() {
  Value = Value ? 0 : 1;
  if (Click) Click();
}

void CheckBox::DescribeOwn(const PropertySink& sink) const {
  sink(QStringLiteral("Caption"), PropValue::Text(Caption));
  sink(QStringLiteral("Value"), PropValue::Int(Value));
}

void Frame::DescribeOwn(const PropertySink& sink) const {
  sink(QStringLiteral("Caption"), PropValue::Text(Caption));
}

void PictureBox::DescribeOwn(const PropertySink& sink) const {
  sink(QStringLiteral("Picture"), PropValue::Int(Picture));
  sink(QStringLiteral("BackColor"), PropValue::Colour(BackColor));
}

unsigned QBColor(int colour) {
  static const unsigned kPalette[16] = {
      0x000000, 0x800000, 0x008000, 0x808000, 0x000080, 0x800080, 0x008080, 0xC0C0C0,
      0x808080, 0xFF0000, 0x00FF00, 0xFFFF00, 0x0000FF, 0xFF00FF, 0x00FFFF, 0xFFFFFF,
  };
  if (colour < 0 || colour > 15) Raise(Err::InvalidCall);
  return kPalette[colour];
}

double DrawingArea::TwipsPerUnit() const {
  switch (ScaleMode) {
    case Scale::Points: return 20.0;
    case Scale::Pixels: return 15.0;
    case Scale::Inches: return 1440.0;
    case Scale::Millimetres: return 1440.0 / 25.4;
    case Scale::Centimetres: return 1440.0 / 2.54;
    default: return 1.0;
  }
}

double DrawingArea::ScaleWidth() const { return (Width - 2 * BorderTwips()) / TwipsPerUnit(); }

double DrawingArea::ScaleHeight() const { return (Height - 2 * BorderTwips()) / TwipsPerUnit(); }

void DrawingArea::Cls() {
  boxes_.clear();
  ++revision_;
}

void DrawingArea::LineBF(double x1, double y1, double x2, double y2, unsigned colour) {
  boxes_.push_back({x1, y1, x2, y2, colour});
  ++revision_;
}

void DrawingArea::DescribeOwn(const PropertySink& sink) const {
  sink(QStringLiteral("ScaleMode"), PropValue::Int(ScaleMode));
  sink(QStringLiteral("ScaleWidth"), PropValue::Double(ScaleWidth()));
  sink(QStringLiteral("ScaleHeight"), PropValue::Double(ScaleHeight()));
  sink(QStringLiteral("BorderStyle"), PropValue::Int(BorderStyle));
  sink(QStringLiteral("BackColor"), PropValue::Colour(BackColor));
}

void Image::DescribeOwn(const PropertySink& sink) const {
  sink(QStringLiteral("Picture"), PropValue::Int(Picture));
}

void Line::DescribeOwn(const PropertySink& sink) const {
  sink(QStringLiteral("X1"), PropValue::Int(X1));
  sink(QStringLiteral("Y1"), PropValue::Int(Y1));
  sink(QStringLiteral("X2"), PropValue::Int(X2));
  sink(QStringLiteral("Y2"), PropValue::Int(Y2));
  sink(QStringLiteral("BorderColor"), PropValue::Colour(BorderColor));
}

Grid::Grid(Form& f, QString name, int index) : Control(f, ControlKind::Grid, name, index) {
  cells_.resize(static_cast<size_t>(rows_ * cols_));
  colWidths_.assign(static_cast<size_t>(cols_), -1);
}

void Grid::SetRows(int rows) {
  if (rows < 0) Raise(Err::InvalidPropertyValue);
  cells_.resize(static_cast<size_t>(rows * cols_));
  rows_ = rows;
  if (Row >= rows_) Row = std::max(0, rows_ - 1);
  ++revision_;
}

void Grid::SetCols(int cols) {
  if (cols < 0) Raise(Err::InvalidPropertyValue);
  std::vector<QString> cells(static_cast<size_t>(rows_ * cols));
  for (int r = 0; r < rows_; ++r)
    for (int c = 0; c < std::min(cols, cols_); ++c)
      cells[static_cast<size_t>(r * cols + c)] = cells_[static_cast<size_t>(r * cols_ + c)];
  cells_.swap(cells);
  colWidths_.resize(static_cast<size_t>(cols), -1);
  cols_ = cols;
  if (Col >= cols_) Col = std::max(0, cols_ - 1);
  ++revision_;
}

void Grid::CheckCell(int row, int col) const {
  if (row < 0 || row >= rows_ || col < 0 || col >= cols_) Raise(kGridIndexError);
}

QString Grid::TextMatrix(int row, int col) const {
  CheckCell(row, col);
  return cells_[static_cast<size_t>(row * cols_ + col)];
}

void Grid::SetTextMatrix(int row, int col, const QString& text) {
  CheckCell(row, col);
  cells_[static_cast<size_t>(row * cols_ + col)] = text;
  ++revision_;
}

int Grid::ColWidth(int col) const {
  CheckCell(0, col);
  return colWidths_[static_cast<size_t>(col)];
}

void Grid::SetColWidth(int col, int twips) {
  CheckCell(0, col);
  colWidths_[static_cast<size_t>(col)] = twips;
  ++revision_;
}

void Grid::SetFormatString(const QString& format) {
  formatString_ = format;
  const QStringList headers = format.split(QLatin1Char('|'));
  if (headers.size() > cols_) SetCols(static_cast<int>(headers.size()));
  if (rows_ > 0) {
    for (int c = 0; c < headers.size(); ++c) {
      QString h = headers[c];
      // A leading <, ^ or > only sets the column's alignment.
      if (!h.isEmpty() &&
          (h[0] == QLatin1Char('<') || h[0] == QLatin1Char('^') || h[0] == QLatin1Char('>')))
        h.remove(0, 1);
      cells_[static_cast<size_t>(c)] = h;
    }
  }
  ++revision_;
}

void Grid::Clear() {
  for (QString& s : cells_) s.clear();
  ++revision_;
}

void Grid::AddItem(const QString& item) {
  const int row = rows_;
  SetRows(rows_ + 1);
  const QStringList cells = item.split(QLatin1Char('\t'));
  for (int c = 0; c < std::min(cols_, static_cast<int>(cells.size())); ++c)
    cells_[static_cast<size_t>(row * cols_ + c)] = cells[c];
}

void Grid::RemoveItem(int row) {
  if (row < 0 || row >= rows_) Raise(kGridIndexError);
  if (rows_ - 1 < FixedRows + 1)
    Raise(kLastRowError, QStringLiteral("Impossible de supprimer la dernière ligne non fixe"));
  cells_.erase(cells_.begin() + row * cols_, cells_.begin() + (row + 1) * cols_);
  --rows_;
  if (Row >= rows_) Row = std::max(0, rows_ - 1);
  ++revision_;
}

void Grid::UserClick(int row, int col) {
  // A fixed row or column is a heading: the click reaches the program, the
  // current cell stays where it was.
  const bool onCell = row >= 0 && row < rows_ && col >= 0 && col < cols_;
  if (onCell && row >= FixedRows && col >= FixedCols) {
    Row = row;
    Col = col;
  }
  if (Click) Click();
}

void Grid::DescribeOwn(const PropertySink& sink) const {
  sink(QStringLiteral("Rows"), PropValue::Int(rows_));
  sink(QStringLiteral("Cols"), PropValue::Int(cols_));
  sink(QStringLiteral("FixedRows"), PropValue::Int(FixedRows));
  sink(QStringLiteral("FixedCols"), PropValue::Int(FixedCols));
  sink(QStringLiteral("Row"), PropValue::Int(Row));
  sink(QStringLiteral("Col"), PropValue::Int(Col));
  sink(QStringLiteral("FormatString"), PropValue::Text(formatString_));
  for (int c = 0; c < cols_; ++c)
    sink(Indexed(QStringLiteral("ColWidth"), c),
         PropValue::Int(colWidths_[static_cast<size_t>(c)]));
  for (int r = 0; r < rows_; ++r)
    for (int c = 0; c < cols_; ++c)
      sink(QStringLiteral("TextMatrix(%1,%2)").arg(r).arg(c),
           PropValue::Text(cells_[static_cast<size_t>(r * cols_ + c)]));
}

ToolbarButton& Toolbar::Buttons(int index) {
  if (index < 1 || index > ButtonCount())
    Raise(kToolbarIndexError, QStringLiteral("Index hors limites"));
  ++Revision;
  return buttons_[static_cast<size_t>(index - 1)];
}

const ToolbarButton& Toolbar::Buttons(int index) const {
  if (index < 1 || index > ButtonCount())
    Raise(kToolbarIndexError, QStringLiteral("Index hors limites"));
  return buttons_[static_cast<size_t>(index - 1)];
}

ToolbarButton& Toolbar::Buttons(const QString& key) {
  for (ToolbarButton& b : buttons_)
    if (b.Key == key) {
      ++Revision;
      return b;
    }
  Raise(kToolbarIndexError, QStringLiteral("Élément introuvable"));
}

ToolbarButton& Toolbar::AddButton(const QString& key, int image, int style) {
  ToolbarButton b;
  b.Key = key;
  b.Image = image;
  b.Style = style;
  b.Index = ButtonCount() + 1;
  buttons_.push_back(b);
  ++Revision;
  return buttons_.back();
}

void Toolbar::UserClick(int index) {
  if (index < 1 || index > ButtonCount()) return;
  const ToolbarButton& b = buttons_[static_cast<size_t>(index - 1)];
  if (b.Style == 3 || !b.Enabled || !ButtonClick) return;
  ButtonClick(Buttons(index));
}

void Toolbar::MakeKeypad(int keys) {
  IsKeypad = true;
  for (int k = 1; k <= keys; ++k) AddButton(QStringLiteral("N%1").arg(k), k);
}

Int16 KeyNumber(const ToolbarButton& button) { return CInt(Val(button.Key.mid(1))); }

void Toolbar::DescribeOwn(const PropertySink& sink) const {
  for (const ToolbarButton& b : buttons_) {
    const QString at = Indexed(QStringLiteral("Buttons"), b.Index);
    sink(at + QStringLiteral(".Key"), PropValue::Text(b.Key));
    sink(at + QStringLiteral(".Image"), PropValue::Int(b.Image));
    if (!b.ToolTipText.isEmpty())
      sink(at + QStringLiteral(".ToolTipText"), PropValue::Text(b.ToolTipText));
    sink(at + QStringLiteral(".Style"), PropValue::Int(b.Style));
    sink(at + QStringLiteral(".Value"), PropValue::Int(b.Value));
  }
}

StatusBar::Panel& StatusBar::Panels(int index) {
  if (index < 1 || index > PanelCount())
    Raise(kToolbarIndexError, QStringLiteral("Index hors limites"));
  return panels_[static_cast<size_t>(index - 1)];
}

const StatusBar::Panel& StatusBar::Panels(int index) const {
  if (index < 1 || index > PanelCount())
    Raise(kToolbarIndexError, QStringLiteral("Index hors limites"));
  return panels_[static_cast<size_t>(index - 1)];
}

void StatusBar::DescribeOwn(const PropertySink& sink) const {
  for (int i = 1; i <= PanelCount(); ++i)
    sink(Indexed(QStringLiteral("Panels"), i) + QStringLiteral(".Text"),
         PropValue::Text(panels_[static_cast<size_t>(i - 1)].Text));
}

void ProgressBar::SetMax(double max) {
  if (max <= min_) Raise(Err::InvalidPropertyValue);
  max_ = max;
  if (value_ > max_) value_ = max_;
}

void ProgressBar::SetValue(double value) {
  if (value < min_ || value > max_) Raise(Err::InvalidPropertyValue);
  value_ = value;
}

void ProgressBar::DescribeOwn(const PropertySink& sink) const {
  sink(QStringLiteral("Min"), PropValue::Double(min_));
  sink(QStringLiteral("Max"), PropValue::Double(max_));
  sink(QStringLiteral("Value"), PropValue::Double(value_));
}

Calendar::Calendar(Form& f, QString name, int index)
    : Control(f, ControlKind::Calendar, name, index), shown_(2000, 1, 1) {}

void Calendar::SetValue(const QDate& value) {
  value_ = value;
  if (value.isValid()) shown_ = value;
}

void Calendar::SetDay(int day) {
  const QDate d(shown_.year(), shown_.month(), day);
  if (!d.isValid()) Raise(Err::InvalidPropertyValue);
  shown_ = d;
  if (value_.isValid()) value_ = d;
}

void Calendar::SetMonth(int month) {
  QDate d(shown_.year(), month, 1);
  if (!d.isValid()) Raise(Err::InvalidPropertyValue);
  d = QDate(shown_.year(), month, std::min(shown_.day(), d.daysInMonth()));
  shown_ = d;
  if (value_.isValid()) value_ = d;
}

void Calendar::SetYear(int year) {
  QDate d(year, shown_.month(), 1);
  if (!d.isValid()) Raise(Err::InvalidPropertyValue);
  d = QDate(year, shown_.month(), std::min(shown_.day(), d.daysInMonth()));
  shown_ = d;
  if (value_.isValid()) value_ = d;
}

void Calendar::UserPick(const QDate& day) {
  SetValue(day);
  if (Click) Click();
}

void Calendar::DescribeOwn(const PropertySink& sink) const {
  sink(QStringLiteral("Value"), PropValue::Date(value_));
  sink(QStringLiteral("Day"), PropValue::Int(Day()));
  sink(QStringLiteral("Month"), PropValue::Int(Month()));
  sink(QStringLiteral("Year"), PropValue::Int(Year()));
}

void Timer::DescribeOwn(const PropertySink& sink) const {
  sink(QStringLiteral("Interval"), PropValue::Int(Interval));
}

void CommonDialog::ShowOpen() { FileName = Parent().Sys().ShowOpen(Filter); }

void CommonDialog::SetAction(int action) {
  if (action == 1)
    ShowOpen();
  else if (action == 5)
    Parent().Sys().ShowPrinterSetup();
  else
    Raise(Err::InvalidPropertyValue);
}

void CommonDialog::DescribeOwn(const PropertySink& sink) const {
  sink(QStringLiteral("Filter"), PropValue::Text(Filter));
  sink(QStringLiteral("FileName"), PropValue::Text(FileName));
  sink(QStringLiteral("Flags"), PropValue::Int(Flags));
}

void Menu::DescribeOwn(const PropertySink& sink) const {
  sink(QStringLiteral("Caption"), PropValue::Text(Caption));
  sink(QStringLiteral("Checked"), PropValue::Bool(Checked));
}

}  // namespace kuvo

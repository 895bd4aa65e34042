#include "gui/FormView.h"

#include <QAbstractTableModel>
#include <QApplication>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QFontDatabase>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QPainter>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTableView>
#include <QTimer>
#include <QToolButton>
#include <algorithm>
#include <cmath>

#include "core/Controls.h"
#include "core/DrawingArea.h"
#include "core/Form.h"
#include "core/Texts.h"
#include "gui/DrawingAreaView.h"
#include "gui/KeypadFaces.h"
#include "gui/MainWindowView.h"
#include "gui/Pictures.h"
#include "gui/QtPlatform.h"

namespace kuvo {

namespace {

// The frame a window's outer size includes: borders and title bar, in pixels.
constexpr int kFrameWidth = 6;
constexpr int kFrameHeight = 25;

PictureScaleHook& ScaleHook() {
  static PictureScaleHook hook;
  return hook;
}

// Colours are kept blue-green-red.
QColor Colour(unsigned bgr) { return QColor(bgr & 0xFF, (bgr >> 8) & 0xFF, (bgr >> 16) & 0xFF); }

// The background of a control: the system's face colour stands for the
// platform's own window colour.
void ApplyBackColour(QWidget* w, unsigned bgr, QPalette::ColorRole role = QPalette::Window) {
  if (bgr == Colours::ButtonFace) {
    w->setAutoFillBackground(false);
    w->setPalette(QPalette());
    return;
  }
  QPalette pal = w->palette();
  pal.setColor(role, Colour(bgr));
  w->setPalette(pal);
  w->setAutoFillBackground(true);
}

Int16 ButtonCode(Qt::MouseButtons b) {
  Int16 code = 0;
  if (b & Qt::LeftButton) code |= 1;
  if (b & Qt::RightButton) code |= 2;
  if (b & Qt::MiddleButton) code |= 4;
  return code;
}

Int16 ShiftCode(Qt::KeyboardModifiers m) {
  Int16 code = 0;
  if (m & Qt::ShiftModifier) code |= 1;
  if (m & Qt::ControlModifier) code |= 2;
  if (m & Qt::AltModifier) code |= 4;
  return code;
}

// The character code a key gives, as KeyPress sees it; 0 for keys without one.
int KeyAscii(const QKeyEvent* e) {
  switch (e->key()) {
    case Qt::Key_Backspace: return 8;
    case Qt::Key_Return:
    case Qt::Key_Enter: return 13;
    case Qt::Key_Escape: return 27;
    case Qt::Key_Tab:
    case Qt::Key_Backtab: return 0;
    default: break;
  }
  const QString t = e->text();
  if (t.isEmpty()) return 0;
  const char16_t u = t.at(0).unicode();
  return u < 0x8000 ? u : 0;
}

QFont FormFont(const Form& form) {
  QFont f = QApplication::font();
  if (QFontDatabase::hasFamily(form.FontName)) f.setFamily(form.FontName);
  f.setPointSizeF(form.FontSize > 0 ? form.FontSize : 8.25);
  return f;
}

}  // namespace

void SetPictureScaleHook(PictureScaleHook hook) { ScaleHook() = std::move(hook); }

double PictureTwipsPerUnit(const PictureBox& picture) {
  if (ScaleHook()) {
    const double s = ScaleHook()(picture);
    if (s > 0) return s;
  }
  return 1.0;
}

// One control on screen: its widget, the state last pushed to it, and the
// user's actions on it turned into the control's events.
class ControlView {
 public:
  ControlView(FormView& view, Control& c)
      : view_(view), c_(c), guard_(std::make_unique<QObject>()) {}
  virtual ~ControlView() = default;
  ControlView(const ControlView&) = delete;
  ControlView& operator=(const ControlView&) = delete;

  Control& TheControl() const { return c_; }
  // The widget showing the control; null for controls with nothing to show.
  virtual QWidget* Widget() const = 0;
  // Where the controls it contains go.
  virtual QWidget* Content() const { return Widget(); }
  // Labels, lines and images lie under the other controls.
  virtual bool Lightweight() const { return false; }
  // Can take the focus (the target of a label's access key).
  virtual bool Focusable() const { return false; }

  void Sync() {
    if (!guard_) return;
    if (Widget()) SyncPlacement();
    SyncOwn();
  }
  // The window is going: no more signals, no more reads of the control.
  virtual void Detach() { guard_.reset(); }

  // Mouse, key and focus events of the watched widgets; true to consume.
  virtual bool OnEvent(QObject* watched, QEvent* event);

 protected:
  virtual void SyncOwn() = 0;
  virtual QRect DesignRect() const {
    return QRect(Px(c_.Left), Px(c_.Top), Px(c_.Width), Px(c_.Height));
  }
  // Mouse position in the control's unit.
  virtual QPointF Units(QObject* watched, QPointF pos) const {
    if (auto* w = qobject_cast<QWidget*>(watched); w && w != Widget() && Widget())
      pos = w->mapTo(Widget(), pos.toPoint());
    return pos * kTwipsPerPixel;
  }
  // True for controls whose Click comes from a plain mouse click on them.
  virtual bool ClickFromMouse() const { return false; }
  QObject* Guard() const { return guard_.get(); }
  // A control out of the user's reach takes no event; a timer's tick is none.
  bool Raise(const std::function<void()>& handler) {
    if (c_.Kind() != ControlKind::Timer && !c_.Reachable()) return false;
    return guard_ && view_.Raise(handler);
  }

  FormView& view_;
  Control& c_;

 private:
  void SyncPlacement();
  std::unique_ptr<QObject> guard_;
  bool first_ = true;
  QRect rect_;
  bool enabled_ = true, visible_ = true;
  QString tip_;
};

void ControlView::SyncPlacement() {
  QWidget* w = Widget();
  const QRect r = DesignRect();
  if (first_ || r != rect_) {
    rect_ = r;
    w->setGeometry(r);
  }
  if (first_ || c_.Enabled != enabled_) {
    enabled_ = c_.Enabled;
    w->setEnabled(enabled_);
  }
  if (first_ || c_.Visible != visible_) {
    visible_ = c_.Visible;
    w->setVisible(visible_);
  }
  if (first_ || c_.ToolTipText != tip_) {
    tip_ = c_.ToolTipText;
    w->setToolTip(tip_);
  }
  first_ = false;
}

bool ControlView::OnEvent(QObject* watched, QEvent* event) {
  if (!guard_) return event->type() == QEvent::KeyPress;
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove: {
      auto* e = static_cast<QMouseEvent*>(event);
      const QPointF at = Units(watched, e->position());
      const Int16 shift = ShiftCode(e->modifiers());
      if (event->type() == QEvent::MouseButtonPress) {
        if (c_.MouseDown) {
          const Int16 b = ButtonCode(e->button());
          Raise([this, b, shift, at] { c_.MouseDown(b, shift, at.x(), at.y()); });
        }
      } else if (event->type() == QEvent::MouseButtonRelease) {
        const Int16 b = ButtonCode(e->button());
        if (c_.MouseUp && !Raise([this, b, shift, at] { c_.MouseUp(b, shift, at.x(), at.y()); }))
          return true;
        auto* w = qobject_cast<QWidget*>(watched);
        if (ClickFromMouse() && e->button() == Qt::LeftButton && w &&
            w->rect().contains(e->position().toPoint()) && c_.Click)
          Raise([this] { c_.Click(); });
      } else if (c_.MouseMove) {
        const Int16 b = ButtonCode(e->buttons());
        Raise([this, b, shift, at] { c_.MouseMove(b, shift, at.x(), at.y()); });
      }
      return false;
    }
    case QEvent::MouseButtonDblClick:
      if (ClickFromMouse() && c_.DblClick) Raise([this] { c_.DblClick(); });
      return false;
    case QEvent::KeyPress: {
      if (!c_.KeyPress) return false;
      const int ascii = KeyAscii(static_cast<QKeyEvent*>(event));
      if (ascii == 0) return false;
      Int16 key = static_cast<Int16>(ascii);
      if (!Raise([this, &key] { c_.KeyPress(key); })) return true;
      return key == 0;
    }
    case QEvent::FocusIn: c_.Parent().ActiveControl = &c_; return false;
    default: return false;
  }
}

namespace {

// Controls with nothing on screen: timers' owners aside, dialogs and menus.
class NullView : public ControlView {
 public:
  using ControlView::ControlView;
  QWidget* Widget() const override { return nullptr; }

 protected:
  void SyncOwn() override {}
};

class LabelView : public ControlView {
 public:
  LabelView(FormView& v, Label& c) : ControlView(v, c), c_(c), w_(new QLabel(&v)) {
    w_->setTextFormat(Qt::PlainText);
    w_->setWordWrap(true);
    v.Watch(w_, this);
  }
  QWidget* Widget() const override { return w_; }
  bool Lightweight() const override { return true; }
  QLabel* TheLabel() const { return w_; }

 protected:
  bool ClickFromMouse() const override { return true; }
  void SyncOwn() override {
    if (first_ || c_.Caption != caption_) {
      caption_ = c_.Caption;
      w_->setText(caption_);
    }
    if (first_ || c_.BackColor != back_ || c_.ForeColor != fore_) {
      back_ = c_.BackColor;
      fore_ = c_.ForeColor;
      ApplyBackColour(w_, back_);
      QPalette pal = w_->palette();
      pal.setColor(QPalette::WindowText, Colour(fore_));
      w_->setPalette(pal);
    }
    if (first_ || c_.FontBold != bold_ || c_.FontSize != size_) {
      bold_ = c_.FontBold;
      size_ = c_.FontSize;
      QFont f = w_->font();
      f.setBold(bold_);
      if (size_ > 0) f.setPointSizeF(size_);
      w_->setFont(f);
    }
    if (first_ || c_.Alignment != align_) {
      align_ = c_.Alignment;
      const Qt::Alignment h = align_ == 1   ? Qt::AlignRight
                              : align_ == 2 ? Qt::AlignHCenter
                                            : Qt::AlignLeft;
      w_->setAlignment(h | Qt::AlignTop);
    }
    first_ = false;
  }

 private:
  Label& c_;
  QLabel* w_;
  bool first_ = true;
  QString caption_;
  unsigned back_ = 0, fore_ = 0;
  bool bold_ = false;
  double size_ = 0;
  int align_ = 0;
};

class ButtonView : public ControlView {
 public:
  ButtonView(FormView& v, CommandButton& c) : ControlView(v, c), c_(c), w_(new QPushButton(&v)) {
    w_->setAutoDefault(false);
    QObject::connect(w_, &QPushButton::clicked, Guard(), [this] {
      if (c_.Click) Raise([this] { c_.Click(); });
    });
    v.Watch(w_, this);
  }
  QWidget* Widget() const override { return w_; }
  bool Focusable() const override { return true; }

 protected:
  void SyncOwn() override {
    if (w_->text() != c_.Caption) w_->setText(c_.Caption);
  }

 private:
  CommandButton& c_;
  QPushButton* w_;
};

class TextBoxView : public ControlView {
 public:
  TextBoxView(FormView& v, TextBox& c) : ControlView(v, c), c_(c) {
    if (c.MultiLine) {
      multi_ = new QPlainTextEdit(&v);
      QObject::connect(multi_, &QPlainTextEdit::textChanged, Guard(), [this] {
        if (syncing_) return;
        c_.Text = multi_->toPlainText();
        if (c_.Change) Raise([this] { c_.Change(); });
      });
      v.Watch(multi_, this);
      v.Watch(multi_->viewport(), this);
    } else {
      line_ = new QLineEdit(&v);
      QObject::connect(line_, &QLineEdit::textEdited, Guard(), [this](const QString& text) {
        c_.Text = text;
        if (c_.Change) Raise([this] { c_.Change(); });
      });
      v.Watch(line_, this);
    }
  }
  QWidget* Widget() const override {
    return line_ ? static_cast<QWidget*>(line_) : static_cast<QWidget*>(multi_);
  }
  bool Focusable() const override { return true; }

  bool OnEvent(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::KeyPress || !c_.KeyPress)
      return ControlView::OnEvent(watched, event);
    const int ascii = KeyAscii(static_cast<QKeyEvent*>(event));
    if (ascii == 0) return false;
    Int16 key = static_cast<Int16>(ascii);
    if (!Raise([this, &key] { c_.KeyPress(key); })) return true;
    if (key == 0) return true;
    if (key == ascii) return false;  // the box takes the key as typed
    // The handler changed the key: the box takes that one instead.
    if (c_.Locked) return true;
    if (line_) {
      if (key == 8)
        line_->backspace();
      else if (key >= 32)
        line_->insert(QString(QChar(key)));
    } else if (key == 8) {
      multi_->textCursor().deletePreviousChar();
    } else if (key >= 32 || key == 13) {
      multi_->insertPlainText(key == 13 ? QStringLiteral("\n") : QString(QChar(key)));
    }
    return true;
  }

 protected:
  void SyncOwn() override {
    syncing_ = true;
    if (line_) {
      if (line_->text() != c_.Text) {
        QSignalBlocker block(line_);
        line_->setText(c_.Text);
      }
      if (line_->isReadOnly() != c_.Locked) line_->setReadOnly(c_.Locked);
    } else {
      if (text_ != c_.Text || first_) {
        text_ = c_.Text;
        if (multi_->toPlainText() != text_) multi_->setPlainText(text_);
      }
      if (multi_->isReadOnly() != c_.Locked) multi_->setReadOnly(c_.Locked);
    }
    first_ = false;
    syncing_ = false;
  }

 private:
  TextBox& c_;
  QLineEdit* line_ = nullptr;
  QPlainTextEdit* multi_ = nullptr;
  QString text_;
  bool first_ = true;
  bool syncing_ = false;
};

class ComboView : public ControlView {
 public:
  ComboView(FormView& v, ComboBox& c) : ControlView(v, c), c_(c), w_(new QComboBox(&v)) {
    w_->setMaxVisibleItems(16);
    w_->setInsertPolicy(QComboBox::NoInsert);
    QObject::connect(w_, &QComboBox::activated, Guard(), [this](int index) {
      if (index < 0 || index >= c_.ListCount()) return;
      Raise([this, index] { c_.UserPick(index); });
    });
    v.Watch(w_, this);
    SetEditable(c_.Style != 2);
  }
  QWidget* Widget() const override { return w_; }
  bool Focusable() const override { return true; }

 protected:
  void SyncOwn() override {
    QSignalBlocker block(w_);
    if ((c_.Style != 2) != w_->isEditable()) SetEditable(c_.Style != 2);
    if (first_ || c_.List != items_) {
      items_ = c_.List;
      w_->clear();
      w_->addItems(items_);
      index_ = -2;
    }
    if (c_.ListIndex() != index_ || w_->currentIndex() != c_.ListIndex()) {
      index_ = c_.ListIndex();
      w_->setCurrentIndex(index_);
    }
    if (w_->isEditable() && w_->currentText() != c_.Text) w_->setEditText(c_.Text);
    first_ = false;
  }

 private:
  void SetEditable(bool editable) {
    w_->setEditable(editable);
    if (editable && w_->lineEdit()) {
      QObject::connect(w_->lineEdit(), &QLineEdit::textEdited, Guard(),
                       [this](const QString& text) {
                         c_.Text = text;
                         if (c_.Change) Raise([this] { c_.Change(); });
                       });
      view_.Watch(w_->lineEdit(), this);
    }
  }
  ComboBox& c_;
  QComboBox* w_;
  QStringList items_;
  int index_ = -2;
  bool first_ = true;
};

class ListView : public ControlView {
 public:
  ListView(FormView& v, ListBox& c) : ControlView(v, c), c_(c), w_(new QListWidget(&v)) {
    w_->setUniformItemSizes(true);
    QObject::connect(w_, &QListWidget::currentRowChanged, Guard(), [this](int row) {
      if (row < 0 || row >= c_.ListCount()) return;
      picked_ = true;
      Raise([this, row] { c_.UserPick(row); });
    });
    QObject::connect(w_, &QListWidget::itemClicked, Guard(), [this](QListWidgetItem* item) {
      const bool picked = picked_;
      picked_ = false;
      if (picked) return;  // the press already picked it
      const int row = w_->row(item);
      if (row >= 0 && row < c_.ListCount()) Raise([this, row] { c_.UserPick(row); });
    });
    QObject::connect(w_, &QListWidget::itemDoubleClicked, Guard(), [this] {
      if (c_.DblClick) Raise([this] { c_.DblClick(); });
    });
    v.Watch(w_, this);
    v.Watch(w_->viewport(), this);
  }
  QWidget* Widget() const override { return w_; }
  bool Focusable() const override { return true; }

  bool OnEvent(QObject* watched, QEvent* event) override {
    // A new press: whether it picks a new row is told by currentRowChanged.
    if (event->type() == QEvent::MouseButtonPress) picked_ = false;
    return ControlView::OnEvent(watched, event);
  }

 protected:
  void SyncOwn() override {
    QSignalBlocker block(w_);
    if (first_ || c_.List != items_) {
      items_ = c_.List;
      w_->clear();
      w_->addItems(items_);
      index_ = -2;
    }
    if (c_.ListIndex() != index_ || w_->currentRow() != c_.ListIndex()) {
      index_ = c_.ListIndex();
      w_->setCurrentRow(index_);
      if (index_ < 0) w_->clearSelection();
    }
    first_ = false;
  }

 private:
  ListBox& c_;
  QListWidget* w_;
  QStringList items_;
  int index_ = -2;
  bool first_ = true;
  bool picked_ = false;
};

class OptionView : public ControlView {
 public:
  OptionView(FormView& v, OptionButton& c) : ControlView(v, c), c_(c), w_(new QRadioButton(&v)) {
    w_->setAutoExclusive(false);
    QObject::connect(w_, &QRadioButton::clicked, Guard(),
                     [this] { Raise([this] { c_.UserClick(); }); });
    v.Watch(w_, this);
  }
  QWidget* Widget() const override { return w_; }
  bool Focusable() const override { return true; }

 protected:
  void SyncOwn() override {
    if (w_->text() != c_.Caption) w_->setText(c_.Caption);
    if (w_->isChecked() != c_.Value) {
      QSignalBlocker block(w_);
      w_->setChecked(c_.Value);
    }
  }

 private:
  OptionButton& c_;
  QRadioButton* w_;
};

class CheckView : public ControlView {
 public:
  CheckView(FormView& v, CheckBox& c) : ControlView(v, c), c_(c), w_(new QCheckBox(&v)) {
    w_->setTristate(false);
    QObject::connect(w_, &QCheckBox::clicked, Guard(),
                     [this] { Raise([this] { c_.UserClick(); }); });
    v.Watch(w_, this);
  }
  QWidget* Widget() const override { return w_; }
  bool Focusable() const override { return true; }

 protected:
  void SyncOwn() override {
    if (w_->text() != c_.Caption) w_->setText(c_.Caption);
    const Qt::CheckState want = c_.Value == 1   ? Qt::Checked
                                : c_.Value == 2 ? Qt::PartiallyChecked
                                                : Qt::Unchecked;
    if (w_->checkState() != want) {
      QSignalBlocker block(w_);
      w_->setCheckState(want);
    }
  }

 private:
  CheckBox& c_;
  QCheckBox* w_;
};

class FrameView : public ControlView {
 public:
  FrameView(FormView& v, Frame& c) : ControlView(v, c), c_(c), w_(new QGroupBox(&v)) {
    v.Watch(w_, this);
  }
  QWidget* Widget() const override { return w_; }

 protected:
  bool ClickFromMouse() const override { return true; }
  void SyncOwn() override {
    if (w_->title() != c_.Caption) w_->setTitle(c_.Caption);
  }

 private:
  Frame& c_;
  QGroupBox* w_;
};

// A drawing area: its picture, then the boxes drawn on it, in its own unit.
class PictureWidget : public QFrame {
 public:
  PictureWidget(QWidget* parent, const PictureBox* pic) : QFrame(parent), pic_(pic) {
    setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    setLineWidth(2);
  }
  void Release() { pic_ = nullptr; }

 protected:
  void paintEvent(QPaintEvent* e) override {
    QFrame::paintEvent(e);
    if (!pic_) return;
    QPainter p(this);
    const QRect inner = contentsRect();
    p.setClipRect(inner);
    if (pic_->BackColor != Colours::ButtonFace) p.fillRect(inner, Colour(pic_->BackColor));
    if (pic_->Picture >= 0) DrawAnimationCell(p, QRectF(inner), pic_->Picture);
    const double pxPerUnit = PictureTwipsPerUnit(*pic_) / kTwipsPerPixel;
    p.translate(inner.topLeft());
    for (const DrawnBox& b : pic_->Drawing) {
      const QRectF r(QPointF(std::min(b.x1, b.x2) * pxPerUnit, std::min(b.y1, b.y2) * pxPerUnit),
                     QPointF(std::max(b.x1, b.x2) * pxPerUnit, std::max(b.y1, b.y2) * pxPerUnit));
      p.fillRect(r, Colour(b.colour));
    }
  }

 private:
  const PictureBox* pic_;
};

class PictureView : public ControlView {
 public:
  PictureView(FormView& v, PictureBox& c)
      : ControlView(v, c), c_(c), w_(new PictureWidget(&v, &c)) {
    w_->setMouseTracking(static_cast<bool>(c.MouseMove));
    v.Watch(w_, this);
  }
  QWidget* Widget() const override { return w_; }
  void Detach() override {
    w_->Release();
    ControlView::Detach();
  }

 protected:
  bool ClickFromMouse() const override { return true; }
  QPointF Units(QObject*, QPointF pos) const override {
    const QPointF inner = pos - QPointF(w_->contentsRect().topLeft());
    return inner * kTwipsPerPixel / PictureTwipsPerUnit(c_);
  }
  void SyncOwn() override {
    if (first_ || c_.Revision != revision_ || c_.Picture != picture_ || c_.BackColor != back_) {
      revision_ = c_.Revision;
      picture_ = c_.Picture;
      back_ = c_.BackColor;
      w_->update();
    }
    first_ = false;
  }

 private:
  PictureBox& c_;
  PictureWidget* w_;
  int revision_ = -1, picture_ = -1;
  unsigned back_ = 0;
  bool first_ = true;
};

class DrawingAreaView : public ControlView {
 public:
  DrawingAreaView(FormView& v, DrawingArea& c)
      : ControlView(v, c), c_(c), w_(new DrawingAreaWidget(&v, &c)) {
    v.Watch(w_, this);
  }
  QWidget* Widget() const override { return w_; }
  void Detach() override {
    w_->Release();
    ControlView::Detach();
  }

 protected:
  bool ClickFromMouse() const override { return true; }
  QPointF Units(QObject*, QPointF pos) const override { return w_->Units(pos); }
  void SyncOwn() override {
    if (c_.Revision() != revision_ || c_.BackColor != back_) {
      revision_ = c_.Revision();
      back_ = c_.BackColor;
      w_->update();
    }
  }

 private:
  DrawingArea& c_;
  DrawingAreaWidget* w_;
  int revision_ = -1;
  unsigned back_ = 0;
};

class DecorationWidget : public QWidget {
 public:
  using QWidget::QWidget;
  int picture = 0;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    DrawDecoration(p, QRectF(rect()), picture);
  }
};

class ImageView : public ControlView {
 public:
  ImageView(FormView& v, Image& c) : ControlView(v, c), c_(c), w_(new DecorationWidget(&v)) {
    v.Watch(w_, this);
  }
  QWidget* Widget() const override { return w_; }
  bool Lightweight() const override { return true; }

 protected:
  bool ClickFromMouse() const override { return true; }
  void SyncOwn() override {
    if (w_->picture != c_.Picture) {
      w_->picture = c_.Picture;
      w_->update();
    }
  }

 private:
  Image& c_;
  DecorationWidget* w_;
};

class LineWidget : public QWidget {
 public:
  using QWidget::QWidget;
  QPointF from, to;
  QColor colour;

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter p(this);
    p.setPen(QPen(colour, 1));
    p.drawLine(from, to);
  }
};

class LineView : public ControlView {
 public:
  LineView(FormView& v, Line& c) : ControlView(v, c), c_(c), w_(new LineWidget(&v)) {
    w_->setAttribute(Qt::WA_TransparentForMouseEvents);
  }
  QWidget* Widget() const override { return w_; }
  bool Lightweight() const override { return true; }

 protected:
  QRect DesignRect() const override {
    const int x1 = Px(c_.X1), y1 = Px(c_.Y1), x2 = Px(c_.X2), y2 = Px(c_.Y2);
    return QRect(QPoint(std::min(x1, x2), std::min(y1, y2)),
                 QPoint(std::max(x1, x2), std::max(y1, y2)));
  }
  void SyncOwn() override {
    const QRect r = DesignRect();
    const QPointF from(Px(c_.X1) - r.left() + 0.5, Px(c_.Y1) - r.top() + 0.5);
    const QPointF to(Px(c_.X2) - r.left() + 0.5, Px(c_.Y2) - r.top() + 0.5);
    const QColor colour = Colour(c_.BorderColor);
    if (from != w_->from || to != w_->to || colour != w_->colour) {
      w_->from = from;
      w_->to = to;
      w_->colour = colour;
      w_->update();
    }
  }

 private:
  Line& c_;
  LineWidget* w_;
};

// The grid's cells as a table model. Fixed row 0 becomes the table's header,
// so that it stays in place when the rows scroll; fixed columns are cells with
// the colour of a header.
class GridModel : public QAbstractTableModel {
 public:
  explicit GridModel(const Grid* grid) : grid_(grid) {}
  void Release() {
    beginResetModel();
    grid_ = nullptr;
    rows_ = cols_ = headRows_ = 0;
    endResetModel();
  }
  int HeadRows() const { return headRows_; }

  // Takes in the grid's changes: rows added at the end are inserted, any other
  // change of shape resets the model (and returns true).
  bool Update() {
    if (!grid_) return false;
    const int rows = grid_->Rows(), cols = grid_->Cols();
    const int headRows = grid_->FixedRows > 0 && rows > 0 ? 1 : 0;
    ReadAlignments();
    if (headRows != headRows_ || cols != cols_ || rows < rows_) {
      beginResetModel();
      rows_ = rows;
      cols_ = cols;
      headRows_ = headRows;
      endResetModel();
      return true;
    }
    if (rows > rows_) {
      beginInsertRows({}, rows_ - headRows_, rows - headRows_ - 1);
      rows_ = rows;
      endInsertRows();
    }
    const int r = rowCount({}), c = columnCount({});
    if (r > 0 && c > 0) emit dataChanged(index(0, 0), index(r - 1, c - 1), {Qt::DisplayRole});
    if (c > 0) emit headerDataChanged(Qt::Horizontal, 0, c - 1);
    return false;
  }

  int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : std::max(0, rows_ - headRows_);
  }
  int columnCount(const QModelIndex& parent) const override { return parent.isValid() ? 0 : cols_; }

  QVariant data(const QModelIndex& index, int role) const override {
    if (!grid_ || !index.isValid()) return {};
    const int r = index.row() + headRows_, c = index.column();
    // The view may paint between a change of the grid and the next sync.
    if (r >= grid_->Rows() || c >= grid_->Cols()) return {};
    switch (role) {
      case Qt::DisplayRole: return grid_->TextMatrix(r, c);
      case Qt::BackgroundRole:
        if (r < grid_->FixedRows || c < grid_->FixedCols) return QApplication::palette().button();
        return {};
      case Qt::TextAlignmentRole: return QVariant::fromValue(Alignment(c, grid_->TextMatrix(r, c)));
      default: return {};
    }
  }

  QVariant headerData(int section, Qt::Orientation o, int role) const override {
    if (!grid_ || role != Qt::DisplayRole || o != Qt::Horizontal) return {};
    if (!headRows_ || section >= grid_->Cols() || grid_->Rows() == 0) return {};
    return grid_->TextMatrix(0, section);
  }

 private:
  // The alignment a column's heading asks with < ^ >; otherwise numbers go
  // right and texts left.
  void ReadAlignments() {
    if (grid_->FormatString() == format_) return;
    format_ = grid_->FormatString();
    align_.clear();
    for (const QString& h : format_.split(QLatin1Char('|'))) {
      if (h.startsWith(QLatin1Char('<')))
        align_.push_back(Qt::AlignLeft);
      else if (h.startsWith(QLatin1Char('^')))
        align_.push_back(Qt::AlignHCenter);
      else if (h.startsWith(QLatin1Char('>')))
        align_.push_back(Qt::AlignRight);
      else
        align_.push_back(Qt::Alignment());
    }
  }
  Qt::Alignment Alignment(int col, const QString& text) const {
    Qt::Alignment h = col < static_cast<int>(align_.size()) ? align_[col] : Qt::Alignment();
    if (!h) {
      bool number = false;
      text.trimmed().toDouble(&number);
      h = number ? Qt::AlignRight : Qt::AlignLeft;
    }
    return h | Qt::AlignVCenter;
  }

  const Grid* grid_;
  int rows_ = 0, cols_ = 0, headRows_ = 0;
  QString format_;
  std::vector<Qt::Alignment> align_;
};

class GridView : public ControlView {
 public:
  GridView(FormView& v, Grid& c)
      : ControlView(v, c), c_(c), w_(new QTableView(&v)), model_(new GridModel(&c)) {
    model_->setParent(w_);
    w_->setModel(model_);
    w_->setSelectionMode(QAbstractItemView::SingleSelection);
    w_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    w_->setCornerButtonEnabled(false);
    w_->setWordWrap(false);
    QHeaderView* rows = w_->verticalHeader();
    rows->setVisible(false);
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setMinimumSectionSize(8);
    rows->setDefaultSectionSize(w_->fontMetrics().height() + 4);
    QHeaderView* cols = w_->horizontalHeader();
    cols->setSectionResizeMode(QHeaderView::Interactive);
    cols->setMinimumSectionSize(0);
    cols->setSectionsClickable(false);
    cols->setHighlightSections(false);
    QObject::connect(w_, &QTableView::clicked, Guard(), [this](const QModelIndex& index) {
      const int row = index.row() + model_->HeadRows(), col = index.column();
      Raise([this, row, col] {
        // The view's own record of the cell follows before the handler runs.
        row_ = row < c_.Rows() ? row : c_.Row;
        col_ = col < c_.Cols() ? col : c_.Col;
        c_.UserClick(row, col);
      });
    });
    QObject::connect(w_, &QTableView::doubleClicked, Guard(), [this] {
      if (c_.DblClick) Raise([this] { c_.DblClick(); });
    });
    v.Watch(w_, this);
    v.Watch(w_->viewport(), this);
  }
  QWidget* Widget() const override { return w_; }
  bool Focusable() const override { return true; }
  void Detach() override {
    model_->Release();
    ControlView::Detach();
  }

 protected:
  void SyncOwn() override {
    if (revision_ != c_.Revision()) {
      revision_ = c_.Revision();
      // A reset model forgets the column widths.
      if (model_->Update()) widths_.clear();
      SyncWidths();
      if (c_.LastRowWritten() != lastRow_) {
        lastRow_ = c_.LastRowWritten();
        const int r = lastRow_ - model_->HeadRows();
        if (r >= 0 && r < model_->rowCount({}) && model_->columnCount({}) > 0) {
          // The scroll range must know the new rows before the view follows.
          QMetaObject::invokeMethod(w_, "updateGeometries", Qt::DirectConnection);
          w_->scrollTo(model_->index(r, std::max(0, w_->columnAt(0))));
        }
      }
    }
    if (row_ != c_.Row || col_ != c_.Col) {
      row_ = c_.Row;
      col_ = c_.Col;
      const int r = row_ - model_->HeadRows();
      if (r >= 0 && col_ >= 0 && r < model_->rowCount({}) && col_ < model_->columnCount({}))
        w_->setCurrentIndex(model_->index(r, col_));
      else
        w_->clearSelection();
    }
  }

 private:
  void SyncWidths() {
    const int cols = c_.Cols();
    widths_.resize(static_cast<size_t>(cols), -2);
    QHeaderView* header = w_->horizontalHeader();
    for (int col = 0; col < cols; ++col) {
      const int tw = c_.ColWidth(col);
      if (widths_[static_cast<size_t>(col)] == tw) continue;
      widths_[static_cast<size_t>(col)] = tw;
      header->resizeSection(col, tw >= 0 ? Px(tw) : header->defaultSectionSize());
    }
    header->setVisible(model_->HeadRows() > 0);
  }

  Grid& c_;
  QTableView* w_;
  GridModel* model_;
  int revision_ = -1;
  int lastRow_ = -1;
  int row_ = -1, col_ = -1;
  std::vector<int> widths_;
};

// A toolbar: a row of picture buttons, or for a keypad a grid of keys ten to
// a row, whose faces show the key plain or marked by its image number.
class ToolbarView : public ControlView {
 public:
  ToolbarView(FormView& v, Toolbar& c) : ControlView(v, c), c_(c), w_(new QWidget(&v)) {
    v.Watch(w_, this);
  }
  QWidget* Widget() const override { return w_; }

 protected:
  QRect DesignRect() const override {
    QRect r = ControlView::DesignRect();
    // A toolbar without a size lies along the top of the window.
    if (r.width() <= 0) r = QRect(0, 0, view_.width(), r.height() > 0 ? r.height() : 30);
    return r;
  }
  void SyncOwn() override {
    const QSize size = w_->size();
    if (c_.ButtonCount() != static_cast<int>(keys_.size()) || size != laidOut_) Rebuild();
    if (c_.Revision == revision_) return;
    revision_ = c_.Revision;
    const Toolbar& bar = c_;
    for (int i = 1; i <= bar.ButtonCount(); ++i) {
      const ToolbarButton& b = bar.Buttons(i);
      Key& k = keys_[static_cast<size_t>(i - 1)];
      if (!k.button) continue;
      if (k.image != b.Image) {
        k.image = b.Image;
        k.button->setIcon(bar.IsKeypad ? KeypadIcon(b.Image) : ToolbarIcon(b.Image));
        if (!bar.IsKeypad && b.Image == 0) k.button->setText(b.Key);
      }
      if (k.button->toolTip() != b.ToolTipText) k.button->setToolTip(b.ToolTipText);
      if (k.button->isEnabled() != b.Enabled) k.button->setEnabled(b.Enabled);
      if (k.button->isVisibleTo(w_) != b.Visible) k.button->setVisible(b.Visible);
    }
  }

 private:
  struct Key {
    QToolButton* button = nullptr;
    int image = -1;
  };

  void Rebuild() {
    for (Key& k : keys_) delete k.button;
    keys_.clear();
    laidOut_ = w_->size();
    revision_ = -1;
    const Toolbar& bar = c_;
    const int n = bar.ButtonCount();
    if (bar.IsKeypad) {
      const int perRow = 10;
      const int rows = std::max(1, (n + perRow - 1) / perRow);
      const int kw = std::max(12, laidOut_.width() / perRow);
      const int kh = laidOut_.height() > 0 ? std::max(12, laidOut_.height() / rows) : kw;
      for (int i = 0; i < n; ++i) {
        Key k;
        if (bar.Buttons(i + 1).Style != 3) {
          k.button = MakeButton(i + 1);
          k.button->setGeometry((i % perRow) * kw, (i / perRow) * kh, kw, kh);
          k.button->setIconSize(QSize(kw - 4, kh - 4));
        }
        keys_.push_back(k);
      }
    } else {
      const int side = std::max(16, laidOut_.height() > 0 ? laidOut_.height() - 4 : 28);
      int x = 2;
      for (int i = 0; i < n; ++i) {
        Key k;
        if (bar.Buttons(i + 1).Style == 3) {
          x += 8;
        } else {
          k.button = MakeButton(i + 1);
          k.button->setGeometry(x, 2, side, side);
          k.button->setIconSize(QSize(side - 8, side - 8));
          x += side;
        }
        keys_.push_back(k);
      }
    }
  }

  QToolButton* MakeButton(int index) {
    auto* b = new QToolButton(w_);
    b->setAutoRaise(!c_.IsKeypad);
    b->setFocusPolicy(Qt::NoFocus);
    QObject::connect(b, &QToolButton::clicked, Guard(), [this, index] {
      Raise([this, index] {
        if (index <= c_.ButtonCount() && c_.ButtonClick) c_.ButtonClick(c_.Buttons(index));
      });
    });
    b->show();
    return b;
  }

  Toolbar& c_;
  QWidget* w_;
  std::vector<Key> keys_;
  QSize laidOut_;
  int revision_ = -1;
};

class StatusView : public ControlView {
 public:
  StatusView(FormView& v, StatusBar& c) : ControlView(v, c), c_(c), w_(new QWidget(&v)) {}
  QWidget* Widget() const override { return w_; }

 protected:
  QRect DesignRect() const override {
    QRect r = ControlView::DesignRect();
    // A status bar without a size lies along the bottom of the window.
    if (r.width() <= 0) {
      const int h = r.height() > 0 ? r.height() : 22;
      r = QRect(0, view_.height() - h, view_.width(), h);
    }
    return r;
  }
  void SyncOwn() override {
    if (static_cast<int>(panels_.size()) != c_.PanelCount() || w_->width() != width_) {
      for (QLabel* l : panels_) delete l;
      panels_.clear();
      width_ = w_->width();
      const int n = std::max(1, c_.PanelCount());
      for (int i = 0; i < c_.PanelCount(); ++i) {
        auto* l = new QLabel(w_);
        l->setTextFormat(Qt::PlainText);
        l->setFrameStyle(QFrame::Panel | QFrame::Sunken);
        l->setGeometry(i * width_ / n, 1, width_ / n - 2, w_->height() - 2);
        l->show();
        panels_.push_back(l);
      }
    }
    for (int i = 0; i < c_.PanelCount(); ++i) {
      const QString& t = static_cast<const StatusBar&>(c_).Panels(i + 1).Text;
      if (panels_[static_cast<size_t>(i)]->text() != t) panels_[static_cast<size_t>(i)]->setText(t);
    }
  }

 private:
  StatusBar& c_;
  QWidget* w_;
  std::vector<QLabel*> panels_;
  int width_ = -1;
};

class ProgressView : public ControlView {
 public:
  static constexpr int kSteps = 10000;
  ProgressView(FormView& v, ProgressBar& c) : ControlView(v, c), c_(c), w_(new QProgressBar(&v)) {
    w_->setRange(0, kSteps);
    w_->setTextVisible(false);
    w_->setValue(0);
  }
  QWidget* Widget() const override { return w_; }

 protected:
  void SyncOwn() override {
    const double span = c_.Max() - c_.Min();
    const int v =
        span > 0 ? static_cast<int>(std::lround((c_.Value() - c_.Min()) / span * kSteps)) : 0;
    if (w_->value() != v) w_->setValue(std::clamp(v, 0, kSteps));
  }

 private:
  ProgressBar& c_;
  QProgressBar* w_;
};

class CalendarView : public ControlView {
 public:
  CalendarView(FormView& v, Calendar& c) : ControlView(v, c), c_(c), w_(new QCalendarWidget(&v)) {
    w_->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    w_->setGridVisible(true);
    // Day and month names follow the program's regional settings.
    w_->setLocale(Regional());
    plain_ = w_->palette();
    QObject::connect(w_, &QCalendarWidget::clicked, Guard(),
                     [this](QDate day) { Raise([this, day] { c_.UserPick(day); }); });
    v.Watch(w_, this);
  }
  QWidget* Widget() const override { return w_; }
  bool Focusable() const override { return true; }

 protected:
  void SyncOwn() override {
    const int narrow = w_->width() < 280 ? 1 : 0;
    if (narrow != narrow_) {
      narrow_ = narrow;
      w_->setHorizontalHeaderFormat(narrow ? QCalendarWidget::SingleLetterDayNames
                                           : QCalendarWidget::ShortDayNames);
    }
    if (!first_ && c_.Value() == value_ && c_.Shown() == shown_) return;
    first_ = false;
    value_ = c_.Value();
    shown_ = c_.Shown();
    QSignalBlocker block(w_);
    if (value_.isValid()) {
      w_->setPalette(plain_);
      w_->setSelectedDate(value_);
    } else {
      // No day chosen: the selection is drawn like any other day.
      QPalette pal = plain_;
      pal.setColor(QPalette::Highlight, pal.color(QPalette::Base));
      pal.setColor(QPalette::HighlightedText, pal.color(QPalette::Text));
      w_->setPalette(pal);
    }
    if (shown_.isValid()) w_->setCurrentPage(shown_.year(), shown_.month());
  }

 private:
  Calendar& c_;
  QCalendarWidget* w_;
  QPalette plain_;
  QDate value_, shown_;
  bool first_ = true;
  int narrow_ = -1;
};

class TimerView : public ControlView {
 public:
  TimerView(FormView& v, Timer& c) : ControlView(v, c), c_(c) {
    QObject::connect(&timer_, &QTimer::timeout, Guard(), [this] {
      if (c_.Tick) Raise([this] { c_.Tick(); });
    });
  }
  QWidget* Widget() const override { return nullptr; }
  void Detach() override {
    timer_.stop();
    ControlView::Detach();
  }

 protected:
  void SyncOwn() override {
    const bool run = c_.Enabled && c_.Interval > 0 && c_.Parent().Loaded();
    if (run && (!timer_.isActive() || timer_.interval() != c_.Interval))
      timer_.start(c_.Interval);
    else if (!run && timer_.isActive())
      timer_.stop();
  }

 private:
  Timer& c_;
  QTimer timer_;
};

std::unique_ptr<ControlView> MakeView(FormView& v, Control& c) {
  switch (c.Kind()) {
    case ControlKind::Label: return std::make_unique<LabelView>(v, static_cast<Label&>(c));
    case ControlKind::CommandButton:
      return std::make_unique<ButtonView>(v, static_cast<CommandButton&>(c));
    case ControlKind::TextBox: return std::make_unique<TextBoxView>(v, static_cast<TextBox&>(c));
    case ControlKind::ComboBox: return std::make_unique<ComboView>(v, static_cast<ComboBox&>(c));
    case ControlKind::ListBox: return std::make_unique<ListView>(v, static_cast<ListBox&>(c));
    case ControlKind::OptionButton:
      return std::make_unique<OptionView>(v, static_cast<OptionButton&>(c));
    case ControlKind::CheckBox: return std::make_unique<CheckView>(v, static_cast<CheckBox&>(c));
    case ControlKind::Frame: return std::make_unique<FrameView>(v, static_cast<Frame&>(c));
    case ControlKind::PictureBox:
      return std::make_unique<PictureView>(v, static_cast<PictureBox&>(c));
    case ControlKind::Image: return std::make_unique<ImageView>(v, static_cast<Image&>(c));
    case ControlKind::Line: return std::make_unique<LineView>(v, static_cast<Line&>(c));
    case ControlKind::Grid: return std::make_unique<GridView>(v, static_cast<Grid&>(c));
    case ControlKind::Toolbar: return std::make_unique<ToolbarView>(v, static_cast<Toolbar&>(c));
    case ControlKind::StatusBar: return std::make_unique<StatusView>(v, static_cast<StatusBar&>(c));
    case ControlKind::ProgressBar:
      return std::make_unique<ProgressView>(v, static_cast<ProgressBar&>(c));
    case ControlKind::Calendar: return std::make_unique<CalendarView>(v, static_cast<Calendar&>(c));
    case ControlKind::Timer: return std::make_unique<TimerView>(v, static_cast<Timer&>(c));
    case ControlKind::DrawingArea:
      return std::make_unique<DrawingAreaView>(v, static_cast<DrawingArea&>(c));
    case ControlKind::CommonDialog:
    case ControlKind::Menu: return std::make_unique<NullView>(v, c);
  }
  return std::make_unique<NullView>(v, c);
}

}  // namespace

FormView::FormView(QtPlatform& platform, Form& form)
    : QWidget(nullptr), platform_(platform), form_(form) {
  setFont(FormFont(form));
  Build();
}

FormView::~FormView() = default;

void FormView::Build() {
  resize(std::max(1, Px(form_.Width) - kFrameWidth), std::max(1, Px(form_.Height) - kFrameHeight));
  for (Control* c : form_.Controls()) controls_.push_back(MakeView(*this, *c));
  // Contained controls go into their frame or picture.
  for (auto& cv : controls_) {
    Control* box = cv->TheControl().Container;
    if (!box || !cv->Widget()) continue;
    if (ControlView* holder = ViewOfControl(*box); holder && holder->Content())
      cv->Widget()->setParent(holder->Content());
  }
  // Labels, lines and images lie under the other controls, as they do on the
  // platform where they have no window of their own.
  for (auto& cv : controls_)
    if (cv->Lightweight() && cv->Widget()) cv->Widget()->lower();
  // A label's access key goes to the control after it.
  for (size_t i = 0; i < controls_.size(); ++i) {
    if (controls_[i]->TheControl().Kind() != ControlKind::Label) continue;
    auto* label = static_cast<QLabel*>(controls_[i]->Widget());
    if (!static_cast<const Label&>(controls_[i]->TheControl()).Caption.contains(QLatin1Char('&')))
      continue;
    QWidget* buddy = label;
    for (size_t j = i + 1; j < controls_.size(); ++j)
      if (controls_[j]->Focusable() && controls_[j]->Widget()) {
        buddy = controls_[j]->Widget();
        break;
      }
    label->setBuddy(buddy);
  }
  Sync();
}

QWidget* FormView::Frame() { return sub_ ? static_cast<QWidget*>(sub_) : this; }

ControlView* FormView::ViewOfControl(const Control& control) const {
  for (const auto& cv : controls_)
    if (&cv->TheControl() == &control) return cv.get();
  return nullptr;
}

QWidget* FormView::WidgetOf(const Control& control) const {
  ControlView* cv = attached_ ? ViewOfControl(control) : nullptr;
  return cv ? cv->Widget() : nullptr;
}

void FormView::Watch(QObject* object, ControlView* view) {
  watched_.insert(object, view);
  object->installEventFilter(this);
}

bool FormView::Raise(const std::function<void()>& handler) {
  if (!attached_) return false;
  platform_.Run(handler);
  return attached_;
}

void FormView::ShowWindow(bool modal) {
  if (!attached_) return;
  if (!placed_) {
    placed_ = true;
    geometry_ = QRect();
    QMdiArea* area = platform_.WorkArea();
    if (form_.MDIChild && !modal && area) {
      sub_ = area->addSubWindow(this, Qt::SubWindow | Qt::CustomizeWindowHint |
                                          Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                          Qt::WindowMinimizeButtonHint | Qt::WindowCloseButtonHint);
      sub_->setAttribute(Qt::WA_DeleteOnClose, false);
      sub_->installEventFilter(this);
    } else {
      setParent(platform_.MainWidget(), Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                            Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    }
  }
  if (!sub_ && modal != modal_) {
    modal_ = modal;
    const bool shown = isVisible();
    if (shown) hide();
    setWindowModality(modal ? Qt::ApplicationModal : Qt::NonModal);
  }
  SyncWindow();
  Frame()->show();
  Frame()->raise();
  if (sub_ && platform_.WorkArea())
    platform_.WorkArea()->setActiveSubWindow(sub_);
  else
    activateWindow();
  visible_ = true;
  Sync();
}

void FormView::ApplyGeometry() {
  const QRect r(Px(form_.Left), Px(form_.Top), Px(form_.Width), Px(form_.Height));
  if (r == geometry_) return;
  geometry_ = r;
  if (sub_) {
    // The frame fixes the size; the view inside fills whatever it holds.
    setMinimumSize(0, 0);
    setMaximumSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX);
    sub_->setFixedSize(r.size());
    sub_->move(std::max(0, r.left()), std::max(0, r.top()));
  } else {
    setFixedSize(std::max(1, r.width() - kFrameWidth), std::max(1, r.height() - kFrameHeight));
    if (isWindow()) move(r.topLeft());
  }
}

void FormView::SyncWindow() {
  if (!captionSet_ || caption_ != form_.Caption) {
    captionSet_ = true;
    caption_ = form_.Caption;
    setWindowTitle(caption_);
    if (sub_) sub_->setWindowTitle(caption_);
  }
  ApplyGeometry();
  if (form_.Enabled != enabled_) {
    enabled_ = form_.Enabled;
    setEnabled(enabled_);
  }
  if (placed_ && form_.Visible != visible_) {
    visible_ = form_.Visible;
    Frame()->setVisible(visible_);
  }
}

void FormView::Sync() {
  if (!attached_) return;
  SyncWindow();
  for (auto& cv : controls_) cv->Sync();
}

void FormView::Detach() {
  if (!attached_) return;
  attached_ = false;
  for (auto& cv : controls_) cv->Detach();
  for (auto it = watched_.begin(); it != watched_.end(); ++it) it.key()->removeEventFilter(this);
  watched_.clear();
  if (sub_) sub_->removeEventFilter(this);
  QWidget* frame = Frame();
  frame->hide();
  frame->deleteLater();
}

void FormView::Focus(Control& control) {
  if (QWidget* w = WidgetOf(control)) w->setFocus(Qt::OtherFocusReason);
}

void FormView::RefreshNow(Control& control) {
  if (!attached_) return;
  if (ControlView* cv = ViewOfControl(control)) {
    cv->Sync();
    if (cv->Widget() && cv->Widget()->isVisible()) cv->Widget()->repaint();
  }
}

void FormView::CloseByFrame() {
  Form* form = &form_;
  Raise([form] { form->Unload(); });
}

void FormView::closeEvent(QCloseEvent* event) {
  event->ignore();
  if (attached_) CloseByFrame();
}

bool FormView::eventFilter(QObject* watched, QEvent* event) {
  if (sub_ && watched == sub_ && event->type() == QEvent::Close) {
    event->ignore();
    if (attached_) CloseByFrame();
    return true;
  }
  if (!attached_) return false;
  ControlView* cv = watched_.value(watched);
  return cv ? cv->OnEvent(watched, event) : false;
}

}  // namespace kuvo

#include "gui/TextBoxView.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>

#include "gui/FormView.h"

namespace kuvo {

TextBoxView::TextBoxView(FormView& v, TextBox& c) : ControlView(v, c), c_(c) {
  if (c.MultiLine) {
    multi_ = new QPlainTextEdit(&v);
    // Tab moves to the next control, as in the platform's text boxes.
    multi_->setTabChangesFocus(true);
    QObject::connect(multi_, &QPlainTextEdit::textChanged, Guard(), [this] {
      if (syncing_) return;
      const QString text = multi_->toPlainText();
      Raise([this, text] { c_.UserType(text); });
    });
    Watch(multi_);
    Watch(multi_->viewport());
  } else {
    line_ = new QLineEdit(&v);
    QObject::connect(line_, &QLineEdit::textEdited, Guard(),
                     [this](const QString& text) { Raise([this, text] { c_.UserType(text); }); });
    Watch(line_);
  }
}

QWidget* TextBoxView::Widget() const {
  return line_ ? static_cast<QWidget*>(line_) : static_cast<QWidget*>(multi_);
}

bool TextBoxView::OnEvent(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || !c_.KeyPress)
    return ControlView::OnEvent(watched, event);
  const int ascii = KeyAscii(static_cast<QKeyEvent*>(event));
  if (ascii == 0) return false;
  Int16 key = static_cast<Int16>(ascii);
  if (!Raise([this, &key] { key = c_.UserKey(key); })) return true;
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

void TextBoxView::SyncOwn() {
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

}  // namespace kuvo

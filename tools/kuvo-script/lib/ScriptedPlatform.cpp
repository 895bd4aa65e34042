#include "ScriptedPlatform.h"

#include <QDir>

#include "core/Form.h"
#include "core/Program.h"
#include "core/Property.h"

namespace kuvo {

void ScriptedPrinter::StartIfNeeded() {
  if (started_) return;
  started_ = true;
  page_ = 1;
  record_ << QStringLiteral("PAGE 1");
}

void ScriptedPrinter::PrintLine(const QString& text) {
  StartIfNeeded();
  record_ << (bold_ ? QStringLiteral("B| ") : QStringLiteral("| ")) + text;
}

void ScriptedPrinter::NewPage() {
  StartIfNeeded();
  ++page_;
  record_ << QStringLiteral("PAGE %1").arg(page_);
}

void ScriptedPrinter::KillDoc() {
  record_ << QStringLiteral("KILLDOC");
  started_ = false;
  page_ = 1;
}

void ScriptedPrinter::EndDoc() {
  record_ << QStringLiteral("ENDDOC");
  started_ = false;
  page_ = 1;
}

ScriptedPlatform::ScriptedPlatform(QString appPath) : appPath_(std::move(appPath)) {}

int ScriptedPlatform::MsgBox(const QString& prompt, int style, const QString& title) {
  QString icon;
  switch (style & 0x70) {
    case 16: icon = QStringLiteral("critical"); break;
    case 32: icon = QStringLiteral("question"); break;
    case 48: icon = QStringLiteral("exclamation"); break;
    case 64: icon = QStringLiteral("information"); break;
    default: icon = QStringLiteral("none");
  }
  Emit(QStringLiteral("MSGBOX %1 %2 %3").arg(icon, QuoteText(title), QuoteText(prompt)));
  switch (style & 0x7) {
    case 4:
    case 3: return 6;   // Yes
    default: return 1;  // OK
  }
}

void ScriptedPlatform::DoEvents() {
  ++yields;
  if (OnYield) OnYield(yields);
}

QString ScriptedPlatform::ShowOpen(const QString&) {
  if (fileAnswers.empty()) return {};
  QString answer = fileAnswers.front();
  fileAnswers.pop_front();
  if (answer.isEmpty()) return {};
  return QDir(appPath_).absoluteFilePath(answer);
}

void ScriptedPlatform::ShellExecute(const QString& verb, const QString& target) {
  Emit(QStringLiteral("SHELL %1 %2").arg(QuoteText(verb), QuoteText(target)));
}

float ScriptedPlatform::Rnd() {
  if (!rndValues.empty()) {
    const float v = rndValues.front();
    rndValues.pop_front();
    return v;
  }
  return random_.Next();
}

void ScriptedPlatform::FormShown(Form& form, bool modal) {
  Emit(QStringLiteral("SHOW %1%2").arg(form.Name(), modal ? QStringLiteral(" modal") : QString()));
}

void ScriptedPlatform::RunModal(Form& form) {
  modalStack.push_back(&form);
  struct Pop {
    std::vector<Form*>& stack;
    ~Pop() { stack.pop_back(); }
  } pop{modalStack};
  if (OnModal) OnModal(form);
}

void ScriptedPlatform::FormUnloaded(Form& form) {
  Emit(QStringLiteral("UNLOAD %1").arg(form.Name()));
}

void ScriptedPlatform::ReportFatal(int number, const QString& text) {
  Emit(QStringLiteral("FATAL %1 %2").arg(number).arg(QuoteText(text)));
}

void ScriptedPlatform::EndProgram() { throw ProgramEnd{}; }

}  // namespace kuvo

#include "core/Program.h"

#include "core/Form.h"
#include "core/Module1.h"
#include "core/Platform.h"
#include "core/TextFiles.h"

namespace kuvo {

Program::Program(Platform& platform, const WindowMakers& windows)
    : platform_(platform),
      windows_(windows),
      module1_(std::make_unique<Module1>(*this)),
      files_(std::make_unique<TextFiles>()) {}

Program::~Program() {
  // Windows go before the module whose record sets they may hold.
  forms_.clear();
}

std::unique_ptr<Form> Program::Create(const QString& name) {
  for (const WindowMaker& w : windows_)
    if (name == QLatin1String(w.name) && w.make) return w.make(*this);
  Raise(Err::ObjectNotSet);
}

Form* Program::FormByName(const QString& name, bool create) {
  for (auto& [type, form] : forms_)
    if (form->Name() == name) return form.get();
  if (!create) return nullptr;
  for (const WindowMaker& w : windows_) {
    if (name != QLatin1String(w.name) || !w.make) continue;
    std::unique_ptr<Form> form = w.make(*this);
    Form* raw = form.get();
    forms_.emplace(std::type_index(typeid(*raw)), std::move(form));
    return raw;
  }
  return nullptr;
}

std::vector<Form*> Program::ExistingForms() const {
  std::vector<Form*> out;
  for (const WindowMaker& w : windows_)
    for (auto& [type, form] : forms_)
      if (form->Name() == QLatin1String(w.name)) out.push_back(form.get());
  return out;
}

QStringList Program::FormNames() const {
  QStringList names;
  for (const WindowMaker& w : windows_) names << QLatin1String(w.name);
  return names;
}

Form& Program::MainForm() {
  Form* main = FormByName(QLatin1String(windows_.front().name), true);
  if (!main) Raise(Err::ObjectNotSet);
  return *main;
}

Form* Program::MainFormIfMade() const {
  const QLatin1String name(windows_.front().name);
  for (auto& [type, form] : forms_)
    if (form->Name() == name) return form.get();
  return nullptr;
}

void Program::Start() {
  RunEvent([this] {
    Form& main = MainForm();
    main.Load();
    if (main.Loaded()) main.Show();
  });
}

void Program::CommitStore() {
  if (module1_->BaseDonnees) module1_->BaseDonnees->CommitPending();
}

void Program::RunEvent(const std::function<void()>& handler) {
  if (ended_) throw ProgramEnd{};
  try {
    handler();
    CommitStore();
  } catch (const VbError& e) {
    try {
      CommitStore();
    } catch (const VbError&) {
      // The report below is what the user gets; a second failure adds nothing.
    }
    platform_.ReportFatal(e.Number(), e.Description());
    End();
  }
}

void Program::Quit() {
  Form& main = MainForm();
  for (Form* form : ExistingForms())
    if (form != &main && form->MDIChild && form->Loaded()) form->Unload();
  main.Unload();
  End();
}

void Program::End() {
  ended_ = true;
  try {
    CommitStore();
  } catch (const VbError&) {
  }
  platform_.EndProgram();
  throw ProgramEnd{};  // a platform that returns from its end still unwinds
}

}  // namespace kuvo

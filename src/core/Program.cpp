#include "core/Program.h"

#include "about/Propos.h"
#include "core/Avance.h"
#include "core/Form.h"
#include "core/MDIKuvo.h"
#include "core/Module1.h"
#include "core/Platform.h"
#include "core/TextFiles.h"
#include "draws/ChargeMiseJour.h"
#include "draws/TirSais.h"
#include "statistics/TirVerif.h"

namespace kuvo {

namespace {

using Factory = std::unique_ptr<Form> (*)(Program&);

template <class W>
std::unique_ptr<Form> Make(Program& p) {
  return std::make_unique<W>(p);
}

struct WindowType {
  const char* name;
  Factory make;  // null for a window this build does not have
};

// Every window of the program; the main window first.
const WindowType kWindows[] = {
    {"MDIKuvo", &Make<MDIKuvo>},
    {"Avance", &Make<Avance>},
    {"AleaBase", nullptr},
    {"AleaOrdi", nullptr},
    {"NumerosAffines", nullptr},
    {"NumPref", nullptr},
    {"TirBase", nullptr},
    {"TirGrou", nullptr},
    {"TirModi", nullptr},
    {"TirSais", &Make<TirSais>},
    {"TirSup", nullptr},
    {"TirVerif", &Make<TirVerif>},
    {"ChargeMiseJour", &Make<ChargeMiseJour>},
    {"Propos", &Make<Propos>},
};

}  // namespace

Program::Program(Platform& platform)
    : platform_(platform),
      module1_(std::make_unique<Module1>(*this)),
      files_(std::make_unique<TextFiles>()) {}

Program::~Program() {
  // Windows go before the module whose record sets they may hold.
  forms_.clear();
}

std::unique_ptr<Form> Program::Create(const QString& name) {
  for (const WindowType& w : kWindows)
    if (name == QLatin1String(w.name) && w.make) return w.make(*this);
  Raise(Err::ObjectNotSet);
}

Form* Program::FormByName(const QString& name, bool create) {
  for (auto& [type, form] : forms_)
    if (form->Name() == name) return form.get();
  if (!create) return nullptr;
  for (const WindowType& w : kWindows) {
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
  for (const WindowType& w : kWindows)
    for (auto& [type, form] : forms_)
      if (form->Name() == QLatin1String(w.name)) out.push_back(form.get());
  return out;
}

QStringList Program::FormNames() {
  QStringList names;
  for (const WindowType& w : kWindows) names << QLatin1String(w.name);
  return names;
}

void Program::Start() {
  RunEvent([this] {
    MDIKuvo& main = Win<MDIKuvo>();
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

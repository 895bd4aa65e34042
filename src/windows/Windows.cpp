#include "windows/Windows.h"

#include "about/Propos.h"
#include "core/Avance.h"
#include "core/MDIKuvo.h"
#include "draws/ChargeMiseJour.h"
#include "draws/TirSais.h"
#include "favourites/NumPref.h"
#include "proposals/AleaOrdi.h"
#include "statistics/TirBase.h"
#include "statistics/TirVerif.h"

namespace kuvo {

namespace {

template <class W>
std::unique_ptr<Form> Make(Program& p) {
  return std::make_unique<W>(p);
}

}  // namespace

const WindowMakers& AllWindows() {
  // A window this build does not have yet has no maker.
  static const WindowMakers windows = {
      {"MDIKuvo", &Make<MDIKuvo>},
      {"Avance", &Make<Avance>},
      {"AleaBase", nullptr},
      {"AleaOrdi", &Make<AleaOrdi>},
      {"NumerosAffines", nullptr},
      {"NumPref", &Make<NumPref>},
      {"TirBase", &Make<TirBase>},
      {"TirGrou", nullptr},
      {"TirModi", nullptr},
      {"TirSais", &Make<TirSais>},
      {"TirSup", nullptr},
      {"TirVerif", &Make<TirVerif>},
      {"ChargeMiseJour", &Make<ChargeMiseJour>},
      {"Propos", &Make<Propos>},
  };
  return windows;
}

}  // namespace kuvo

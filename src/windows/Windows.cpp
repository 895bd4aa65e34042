#include "windows/Windows.h"

#include "about/Propos.h"
#include "core/Avance.h"
#include "core/MDIKuvo.h"
#include "draws/ChargeMiseJour.h"
#include "draws/TirModi.h"
#include "draws/TirSais.h"
#include "draws/TirSup.h"
#include "favourites/NumPref.h"
#include "proposals/AleaBase.h"
#include "proposals/AleaOrdi.h"
#include "statistics/NumerosAffines.h"
#include "statistics/TirBase.h"
#include "statistics/TirGrou.h"
#include "statistics/TirVerif.h"

namespace kuvo {

namespace {

template <class W>
std::unique_ptr<Form> Make(Program& p) {
  return std::make_unique<W>(p);
}

}  // namespace

const WindowMakers& AllWindows() {
  static const WindowMakers windows = {
      {"MDIKuvo", &Make<MDIKuvo>},
      {"Avance", &Make<Avance>},
      {"AleaBase", &Make<AleaBase>},
      {"AleaOrdi", &Make<AleaOrdi>},
      {"NumerosAffines", &Make<NumerosAffines>},
      {"NumPref", &Make<NumPref>},
      {"TirBase", &Make<TirBase>},
      {"TirGrou", &Make<TirGrou>},
      {"TirModi", &Make<TirModi>},
      {"TirSais", &Make<TirSais>},
      {"TirSup", &Make<TirSup>},
      {"TirVerif", &Make<TirVerif>},
      {"ChargeMiseJour", &Make<ChargeMiseJour>},
      {"Propos", &Make<Propos>},
  };
  return windows;
}

}  // namespace kuvo

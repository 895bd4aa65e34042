#include "core/Module1.h"

#include "core/Avance.h"
#include "core/Form.h"
#include "core/MDIKuvo.h"
#include "core/Platform.h"
#include "core/Program.h"
#include "core/Texts.h"

namespace kuvo {

void Module1::FermeFenetres() {
  // Any error on the way is passed over: the next window is unloaded all the same.
  static const char* const kChildren[] = {
      "AleaBase", "AleaOrdi", "NumerosAffines", "NumPref", "TirBase",  nullptr,
      "TirGrou",  "TirModi",  "TirSais",        "TirSup",  "TirVerif", "ChargeMiseJour"};
  for (const char* name : kChildren) {
    try {
      // The slot without a name is an object that is never set.
      if (!name) Raise(Err::ObjectNotSet);
      if (Form* form = program_.FormByName(QLatin1String(name), false)) form->Unload();
    } catch (const VbError&) {
    }
  }
}

void Module1::MajGroupes(const QString& Tirage) {
  QString a[6];
  for (int k = 1; k <= 5; ++k) a[k] = Tirage.mid((k - 1) * 3, 2);

  // Shell sort, ascending, on the texts.
  for (int gap = 5 / 2; gap > 0; gap /= 2) {
    for (int i = 1; i <= 5 - gap; ++i) {
      for (int j = i; j >= 1; j -= gap) {
        const int l = j + gap;
        if (a[j] <= a[l]) break;
        std::swap(a[j], a[l]);
      }
    }
  }

  static const char* const kTables[] = {"Groupe2", "Groupe3", "Groupe4", "Groupe5"};
  for (int size = 2; size <= 5; ++size) {
    RsGroupe = BaseDonnees->OpenRecordset(QLatin1String(kTables[size - 2]));
    RsGroupe->SetIndex(QStringLiteral("Numeros"));
    // Positions of the group, as nested ascending loops over 1..5.
    int pos[5];
    for (int k = 0; k < size; ++k) pos[k] = k + 1;
    QString key;
    key.reserve(14);
    while (true) {
      key.truncate(0);
      key += a[pos[0]];
      for (int k = 1; k < size; ++k) {
        key += QLatin1Char(',');
        key += a[pos[k]];
      }
      RsGroupe->Seek(QStringLiteral("="), key);
      if (RsGroupe->NoMatch()) {
        RsGroupe->AddNew();
        RsGroupe->Fields(QStringLiteral("Numeros")).SetValue(key);
        RsGroupe->Fields(QStringLiteral("Sorties")).SetValue(1);
        RsGroupe->Update();
      } else {
        const qlonglong count =
            RsGroupe->Fields(QStringLiteral("Sorties")).GetValue().toLongLong() + 1;
        RsGroupe->Edit();
        RsGroupe->Fields(QStringLiteral("Sorties")).SetValue(count);
        RsGroupe->Update();
      }
      int k = size - 1;
      while (k >= 0 && pos[k] == 5 - (size - 1 - k)) --k;
      if (k < 0) break;
      ++pos[k];
      for (int m = k + 1; m < size; ++m) pos[m] = pos[m - 1] + 1;
    }
  }
}

void Module1::CompileBase() {
  Platform& sys = program_.Sys();
  sys.SetMousePointer(Pointer::Wait);
  program_.Win<MDIKuvo>().Show();

  std::shared_ptr<Recordset> raw = BaseDonnees->OpenRecordset(QStringLiteral("Kuvo"));
  raw->MoveLast();
  raw->MoveFirst();
  const Int16 maximum = Add16(raw->RecordCount() * 1, 1);
  Avance& avance = program_.Win<Avance>();
  avance.Depart(QStringLiteral("Preparation de la base de données"), maximum, 1);
  while (!raw->Eof()) {
    const QString date = ValueText(raw->Fields(QStringLiteral("date_de_tirage")).GetValue());
    const QString text =
        date.right(2) + QLatin1Char('/') + date.mid(4, 2) + QLatin1Char('/') + date.left(4);
    const QDate drawn = DateFromText(text);
    RsSorties->AddNew();
    RsSorties->Fields(QStringLiteral("DateTirage")).SetValue(drawn);
    static const char* const kFrom[] = {"boule_1", "boule_2", "boule_3", "boule_4", "boule_5"};
    static const char* const kTo[] = {"numero1", "numero2", "numero3", "numero4", "numero5"};
    for (int k = 0; k < 5; ++k)
      RsSorties->Fields(QLatin1String(kTo[k]))
          .SetValue(raw->Fields(QLatin1String(kFrom[k])).GetValue());
    RsSorties->Fields(QStringLiteral("NumeroChance"))
        .SetValue(raw->Fields(QStringLiteral("Numero_Chance")).GetValue());
    RsSorties->Update();
    raw->MoveNext();
    avance.Increment();
  }

  avance.Unload();
  avance.Depart(QStringLiteral("Compilation des Tables des Sorties"), maximum, 1);
  RsSorties->MoveFirst();
  while (!RsSorties->Eof()) {
    QString tirage;
    static const char* const kNumbers[] = {"numero1", "numero2", "numero3", "numero4", "numero5"};
    for (int k = 0; k < 5; ++k) {
      const QVariant value = RsSorties->Fields(QLatin1String(kNumbers[k])).GetValue();
      QString piece = Str(Val(ValueText(value))).trimmed();
      if (piece.size() == 1) piece.prepend(QLatin1Char('0'));
      if (k < 4) piece += QLatin1Char(',');
      tirage += piece;
    }
    MajGroupes(tirage);
    RsSorties->MoveNext();
    avance.Increment();
  }
  avance.Unload();
  sys.SetMousePointer(Pointer::Default);
}

namespace {

// The Shell sort of the ordering routines, halving gaps, on elements 1..Nombre:
// element l moves ahead of element j unless `Suit(j, l)` says they stand right.
template <class InOrder>
void ShellSort(int Nombre, std::vector<EnregStat>& Tableau, InOrder Suit) {
  auto at = [&](int k) -> EnregStat& {
    if (k < 0 || k >= static_cast<int>(Tableau.size())) Raise(Err::SubscriptOutOfRange);
    return Tableau[static_cast<size_t>(k)];
  };
  int gap = Nombre;
  while (true) {
    gap /= 2;
    if (gap == 0) break;
    const int limit = Nombre - gap;
    for (int i = 1; i <= limit; ++i) {
      for (int j = i; j >= 1; j -= gap) {
        const int l = j + gap;
        if (Suit(at(j), at(l))) break;
        std::swap(at(j), at(l));
      }
    }
  }
}

}  // namespace

void Module1::TriTaux(Int16 Nombre, std::vector<EnregStat>& Tableau) {
  Platform& sys = program_.Sys();
  sys.SetMousePointer(Pointer::Wait);
  ShellSort(Nombre, Tableau,
            [](const EnregStat& j, const EnregStat& l) { return j.Taux >= l.Taux; });
  sys.SetMousePointer(Pointer::Default);
}

void Module1::TriNumeros() {
  Platform& sys = program_.Sys();
  sys.SetMousePointer(Pointer::Wait);
  ShellSort(49, StatNumeros,
            [](const EnregStat& j, const EnregStat& l) { return j.Numero <= l.Numero; });
  sys.SetMousePointer(Pointer::Default);
}

void Module1::Describe(const PropertySink& sink) const {
  sink(QStringLiteral("CheminAppli"), PropValue::Text(CheminAppli));
  sink(QStringLiteral("NbTirages"), PropValue::Int(NbTirages));
  sink(QStringLiteral("ModeGroupe"), PropValue::Int(ModeGroupe));
  sink(QStringLiteral("ArretDemande"), PropValue::Int(ArretDemande));
  auto stats = [&](const char* name, const std::vector<EnregStat>& v) {
    for (size_t i = 0; i < v.size(); ++i) {
      const QString at = QStringLiteral("%1(%2).").arg(QLatin1String(name)).arg(i);
      sink(at + QStringLiteral("Numero"), PropValue::Double(v[i].Numero));
      sink(at + QStringLiteral("NbSorties"), PropValue::Int(v[i].NbSorties));
      sink(at + QStringLiteral("Taux"), PropValue::Double(v[i].Taux));
    }
  };
  stats("StatNumeros", StatNumeros);
  stats("StatChance", StatChance);
}

}  // namespace kuvo

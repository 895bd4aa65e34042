#include "draws/TirSup.h"

#include "core/Module1.h"
#include "core/Program.h"
#include "core/Texts.h"

namespace kuvo {

namespace {

const char* const kNumbers[] = {"numero1", "numero2", "numero3", "numero4", "numero5"};

void SetLabel(Label& label, const char* caption, int left, int top, int width, int height = 255) {
  label.Caption = QString::fromUtf8(caption);
  label.Move(left, top, width, height);
}

// The date text of the list as the statement wants it; a text that is no date
// goes through as it stands.
QString StatementDate(const QString& text, const char* mask) {
  return IsDateText(text) ? FormatDate(DateFromText(text), QLatin1String(mask)) : text;
}

// The way out of the list's error handler: any error but a missing current
// record leaves the procedure, silently.
struct LeaveSilently {};

// One statement under the list's error handler: a missing current record runs
// it again, for as long as it fails.
template <class Statement>
auto Resume(Statement&& statement) {
  for (;;) {
    try {
      return statement();
    } catch (const VbError& e) {
      if (e.Number() != Err::NoCurrentRecord) throw LeaveSilently{};
    }
  }
}

// A cell of the grid against a column of the current draw: a missing value
// equals no number, not even the 0 of an empty cell.
bool SameNumber(const QString& cell, const Value& value) {
  return !value.isNull() && Val(cell) == value.toDouble();
}

}  // namespace

TirSupUi::TirSupUi(TirSup& f)
    : Label1(f, "Label1"),
      Label2(f, "Label2"),
      Label4(f, "Label4"),
      Label3(f, "Label3"),
      Label5(f, "Label5"),
      Label6(f, "Label6"),
      Label23(f, "Label23"),
      Combo1(f, "Combo1"),
      Grille(f, "Grille"),
      MiseJour(f, "MiseJour"),
      Quitter(f, "Quitter") {
  f.Caption = QStringLiteral("Supprimer un Tirage");
  f.Width = 5340;
  f.Height = 5520;

  // The steps to follow.
  constexpr int left = 240;
  SetLabel(Label1, "1", left, 120, 240);
  SetLabel(Label2, "Sélectionnez la date du tirage", left + 300, 120, 4440);
  SetLabel(Label4, "2", left, 390, 240);
  SetLabel(Label3, "puis le tirage", left + 300, 390, 4440);
  SetLabel(Label5, "3", left, 660, 240);
  SetLabel(Label6, "et cliquez sur Supprimer", left + 300, 660, 4440);
  for (Label* step : {&Label1, &Label4, &Label5}) {
    step->FontBold = true;
    step->ForeColor = Colours::Red;
  }

  // The date, then its draws.
  SetLabel(Label23, "Date du Tirage", left, 1080, 2400);
  Label23.FontBold = true;
  Combo1.Text = QString::fromUtf8("Sélectionnez une date");
  Combo1.Move(left, 1350, 3000, 315);
  Grille.Move(left, 1860, 4740, 2160);
  Grille.SetCols(8);
  Grille.FixedRows = 1;
  Grille.SetFixedCols(1);
  Grille.SetFormatString(QString::fromUtf8("n° |  1 |  2 |  3 |  4 |  5 | Chance"));
  for (int c = 0; c <= 5; ++c) Grille.SetColWidth(c, 540);
  Grille.SetColWidth(6, 780);
  Grille.SetColWidth(7, 240);

  constexpr int buttonsTop = 4320;
  MiseJour.Caption = QStringLiteral("&Supprimer");
  MiseJour.Enabled = false;
  MiseJour.Move(left, buttonsTop, 2160, 480);
  Quitter.Caption = QStringLiteral("&Retour au menu");
  Quitter.Move(left + 2580, buttonsTop, 2160, 480);

  Combo1.Click = [&f] { f.Combo1_Click(); };
  Grille.Click = [&f] { f.Grille_Click(); };
  MiseJour.Click = [&f] { f.MiseJour_Click(); };
  Quitter.Click = [&f] { f.Quitter_Click(); };
}

TirSup::TirSup(Program& program) : FormOf(program, kName) {}

void TirSup::Form_Load() {
  PlaceAsChild();
  RemplitFenetre();
}

void TirSup::RemplitFenetre() {
  ComboBox& dates = ui().Combo1;
  dates.Clear();
  Recordset& sorties = *M().RsSorties;
  sorties.SetIndex(QStringLiteral("DateTirage"));
  sorties.MoveFirst();
  while (!sorties.Eof()) {
    dates.AddItem(FormatDate(sorties.Fields(QStringLiteral("DateTirage")).GetValue().toDate(),
                             QStringLiteral("dd mmmm yyyy")));
    sorties.MoveNext();
  }
  dates.Text = QString::fromUtf8("Sélectionnez une date");
}

void TirSup::Combo1_Click() {
  try {
    TirSupUi& u = ui();
    const QString date = Resume([&] { return StatementDate(u.Combo1.Text, "dd mm yy"); });
    // The date is compared as text, through the store's own formatting function.
    Resume([&] {
      RsTirage = M().BaseDonnees->OpenRecordset(
          QStringLiteral("select * from Sorties where format(DateTirage,\"dd mm yy\") = \"") +
          date + QLatin1Char('"'));
    });
    Resume([&] { RsTirage->MoveLast(); });
    Resume([&] { RsTirage->MoveFirst(); });
    Grid& grille = u.Grille;
    Resume([&] { grille.SetRows(static_cast<int>(RsTirage->RecordCount() + 1)); });
    // Each cell is written at the grid's current cell, which ends on the last row.
    auto cell = [&grille](int col, const QString& text) {
      grille.Col = col;
      grille.SetText(text);
    };
    Int16 i = 1;
    while (Resume([&] { return !RsTirage->Eof(); })) {
      Resume([&] { grille.Row = i; });
      Resume([&] { cell(0, QString::number(i)); });
      for (int k = 0; k < 5; ++k)
        Resume([&] {
          cell(k + 1, ValueText(RsTirage->Fields(QLatin1String(kNumbers[k])).GetValue()));
        });
      Resume(
          [&] { cell(6, ValueText(RsTirage->Fields(QStringLiteral("NumeroChance")).GetValue())); });
      Resume([&] { RsTirage->MoveNext(); });
      Resume([&] { i = Add16(i, 1); });
    }
    Resume([&] { grille.Enabled = true; });
  } catch (const LeaveSilently&) {
  }
}

void TirSup::Grille_Click() {
  // The row is read when the draw is deleted.
  ui().MiseJour.Enabled = true;
}

void TirSup::MiseJour_Click() {
  TirSupUi& u = ui();
  Grid& grille = u.Grille;
  QString drawn[6];
  for (int k = 0; k <= 5; ++k) drawn[k] = grille.TextMatrix(grille.Row, k + 1);

  // The first row of the date that holds these six values goes, at once.
  if (!RsTirage) Raise(Err::ObjectNotSet);
  RsTirage->MoveFirst();
  while (!RsTirage->Eof()) {
    bool found = true;
    for (int k = 0; k < 5; ++k)
      found =
          found && SameNumber(drawn[k], RsTirage->Fields(QLatin1String(kNumbers[k])).GetValue());
    found =
        found && SameNumber(drawn[5], RsTirage->Fields(QStringLiteral("NumeroChance")).GetValue());
    if (found) break;
    RsTirage->MoveNext();
  }
  RsTirage->Delete();

  grille.Enabled = false;
  grille.SetRows(2);
  for (int c = 0; c <= 6; ++c) {
    grille.Col = c;
    grille.SetText(QString());
  }
  RemplitFenetre();
  u.MiseJour.Enabled = false;
}

void TirSup::Quitter_Click() { Unload(); }

}  // namespace kuvo

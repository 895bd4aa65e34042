#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "core/Errors.h"
#include "core/Property.h"
#include "core/Store.h"

namespace kuvo {

class Program;

// One statistics record: a number, its outings and its rate in percent.
struct EnregStat {
  double Numero = 0;
  Int16 NbSorties = 0;
  double Taux = 0;
};

// The shared module: the variables every window uses and the shared procedures.
class Module1 {
 public:
  explicit Module1(Program& program) : program_(program) {}

  QString CheminAppli;
  std::unique_ptr<Database> BaseDonnees;
  std::shared_ptr<Recordset> RsSorties;
  std::shared_ptr<Recordset> RsMesNumeros;
  std::shared_ptr<Recordset> RsGroupe;
  Int16 NbTirages = 0;
  std::vector<EnregStat> StatNumeros;
  std::vector<EnregStat> StatChance;
  Int16 ModeGroupe = 0;
  Int16 ArretDemande = 0;
  std::vector<bool> CasesAleaOrdi;

  // Unloads the child windows, so that one stands at a time.
  void FermeFenetres();
  // Adds one draw, given as "23,07,41,02,36", to the four group tables.
  void MajGroupes(const QString& Tirage);
  // Rebuilds Sorties from Kuvo and feeds every draw to the group tables.
  void CompileBase();
  // Orders elements 1..Nombre by descending Taux.
  void TriTaux(Int16 Nombre, std::vector<EnregStat>& Tableau);
  // Puts elements 1..49 of StatNumeros back in ascending order of Numero.
  void TriNumeros();

  void Describe(const PropertySink& sink) const;

 private:
  Program& program_;
};

}  // namespace kuvo

#pragma once

#include <QByteArray>
#include <QList>
#include <memory>

#include "core/Form.h"

namespace kuvo {

class ChargeMiseJour;
class Recordset;

struct ChargeMiseJourUi {
  explicit ChargeMiseJourUi(ChargeMiseJour& f);
  Image Image6;
  TextBox Text1;  // the help text
  CommandButton ImportFichier;
  CommandButton Cmd_Importation;
  CommandButton Quitter;
  CommonDialog CommonDialog1;
  Line Line1, Line2, Line3, Line4;
};

// Replaces the whole history by the operator's history file: opens the
// operator's page in the browser, then loads the file the user fetched.
class ChargeMiseJour : public FormOf<ChargeMiseJour, ChargeMiseJourUi> {
 public:
  static constexpr const char* kName = "ChargeMiseJour";
  explicit ChargeMiseJour(Program& program);
  ~ChargeMiseJour() override;

  void ImportFichier_Click();
  void Cmd_Importation_Click();
  void Quitter_Click();

 protected:
  void Form_Load() override;
  void DescribeVariables(const PropertySink& sink) const override;

 private:
  // The operator's own files take their own path: read and checked as the
  // converter reads them, merged with the history in one unit of work. `bytes`
  // receives the file.
  bool FichierOperateur(const QString& chosen, QByteArray& bytes);
  void ChargeFichierOperateur(const QString& chosen, const QByteArray& bytes);
  // The message that refuses a load while another one runs.
  void DejaEnCours();

  // Window variables. A character of the file is one byte: the fields are
  // decoded from UTF-8 only when they go to the store.
  QByteArray LigneTexte;     // the current line of text
  QList<QByteArray> Champs;  // the fields of a line
  Int32 IndiceChamp = 0;     // the field being stored
  std::shared_ptr<Recordset> RsKuvo;
  QString NomFichier;        // the file the last pass reads
  Int32 ImportsEnCours = 0;  // loads of the import's own layout under way
};

}  // namespace kuvo

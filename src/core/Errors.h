#pragma once

#include <QString>
#include <cstdint>
#include <exception>

namespace kuvo {

// Error numbers the program raises or catches by number.
namespace Err {
constexpr int OutOfMemory = 7;             // Mémoire insuffisante
constexpr int InternalError = 51;          // Erreur interne
constexpr int InvalidCall = 5;             // Argument ou appel de procédure incorrect
constexpr int Overflow = 6;                // Dépassement de capacité
constexpr int SubscriptOutOfRange = 9;     // L'indice n'appartient pas à la sélection
constexpr int DivisionByZero = 11;         // Division par zéro
constexpr int TypeMismatch = 13;           // Incompatibilité de type
constexpr int FileAlreadyOpen = 55;        // Fichier déjà ouvert
constexpr int BadFileName = 52;            // Nom ou numéro de fichier incorrect
constexpr int FileNotFound = 53;           // Fichier introuvable
constexpr int BadFileMode = 54;            // Mode d'accès au fichier incorrect
constexpr int InputPastEnd = 62;           // Tentative de lecture après la fin du fichier
constexpr int TooManyFiles = 67;           // Trop de fichiers
constexpr int PathAccess = 75;             // Erreur d'accès au chemin/fichier
constexpr int InvalidUseOfNull = 94;       // Utilisation incorrecte de Null
constexpr int InvalidPropertyValue = 380;  // Valeur de propriété non valide
constexpr int FormAlreadyShown = 400;      // Feuille déjà affichée; affichage modal impossible
constexpr int ObjectNotSet = 91;           // Variable objet ou variable bloc With non définie
constexpr int ItemNotFound = 3265;         // Élément non trouvé dans cette collection.
constexpr int NoCurrentRecord = 3021;      // Aucun enregistrement en cours.
constexpr int ConversionError = 3421;      // Erreur de conversion de type de données.
constexpr int TableNotFound = 3078;        // table introuvable
constexpr int FileNotFoundDb = 3024;       // fichier de base introuvable
constexpr int StoreFailure = 3000;         // other failures of the store
}  // namespace Err

// The standard text of a numbered error ("" for a number it does not know).
QString ErrorText(int number);

// A numbered run-time error, as the platform reports it.
class VbError : public std::exception {
 public:
  explicit VbError(int number, QString text = {});
  int Number() const { return number_; }
  const QString& Description() const { return text_; }
  const char* what() const noexcept override { return utf8_.c_str(); }

 private:
  int number_;
  QString text_;
  std::string utf8_;
};

// Raises error `number` with its standard text (or `text` when given).
[[noreturn]] void Raise(int number, const QString& text = {});

// 16-bit signed counters, as the program's counters and numbers are.
using Int16 = std::int16_t;
using Int32 = std::int32_t;

// Checked conversions and arithmetic: a result outside the type raises error 6.
Int16 ToInt16(long long value);
Int32 ToInt32(long long value);
Int16 Add16(long long a, long long b);
Int16 Sub16(long long a, long long b);
Int16 Mul16(long long a, long long b);

// Division in double precision: a divisor of 0 raises error 11, or error 6
// when the dividend is 0 as well.
double DivDbl(double a, double b);

}  // namespace kuvo

#include "core/Errors.h"

#include <limits>

namespace kuvo {

QString ErrorText(int number) {
  switch (number) {
    case Err::OutOfMemory: return QStringLiteral("Mémoire insuffisante");
    case Err::InternalError: return QStringLiteral("Erreur interne");
    case Err::InvalidCall: return QStringLiteral("Argument ou appel de procédure incorrect");
    case Err::Overflow: return QStringLiteral("Dépassement de capacité");
    case Err::SubscriptOutOfRange:
      return QStringLiteral("L'indice n'appartient pas à la sélection");
    case Err::DivisionByZero: return QStringLiteral("Division par zéro");
    case Err::TypeMismatch: return QStringLiteral("Incompatibilité de type");
    case Err::BadFileName: return QStringLiteral("Nom ou numéro de fichier incorrect");
    case Err::FileNotFound: return QStringLiteral("Fichier introuvable");
    case Err::TooManyFiles: return QStringLiteral("Trop de fichiers");
    case Err::PathAccess: return QStringLiteral("Erreur d'accès au chemin/fichier");
    case Err::BadFileMode: return QStringLiteral("Mode d'accès au fichier incorrect");
    case Err::FileAlreadyOpen: return QStringLiteral("Fichier déjà ouvert");
    case Err::InputPastEnd: return QStringLiteral("Tentative de lecture après la fin du fichier");
    case Err::ObjectNotSet:
      return QStringLiteral("Variable objet ou variable bloc With non définie");
    case Err::InvalidUseOfNull: return QStringLiteral("Utilisation incorrecte de Null");
    case Err::InvalidPropertyValue: return QStringLiteral("Valeur de propriété non valide");
    case Err::FormAlreadyShown:
      return QStringLiteral("Feuille déjà affichée; affichage modal impossible");
    case Err::ItemNotFound: return QStringLiteral("Élément non trouvé dans cette collection.");
    case Err::NoCurrentRecord: return QStringLiteral("Aucun enregistrement en cours.");
    case Err::ConversionError: return QStringLiteral("Erreur de conversion de type de données.");
    default: return {};
  }
}

VbError::VbError(int number, QString text)
    : number_(number), text_(text.isEmpty() ? ErrorText(number) : std::move(text)) {
  utf8_ = QStringLiteral("%1 %2").arg(number_).arg(text_).toStdString();
}

void Raise(int number, const QString& text) { throw VbError(number, text); }

Int16 ToInt16(long long value) {
  if (value < std::numeric_limits<Int16>::min() || value > std::numeric_limits<Int16>::max())
    Raise(Err::Overflow);
  return static_cast<Int16>(value);
}

Int32 ToInt32(long long value) {
  if (value < std::numeric_limits<Int32>::min() || value > std::numeric_limits<Int32>::max())
    Raise(Err::Overflow);
  return static_cast<Int32>(value);
}

Int16 Add16(long long a, long long b) { return ToInt16(a + b); }
Int16 Sub16(long long a, long long b) { return ToInt16(a - b); }
Int16 Mul16(long long a, long long b) { return ToInt16(a * b); }

double DivDbl(double a, double b) {
  if (b == 0) Raise(a == 0 ? Err::Overflow : Err::DivisionByZero);
  return a / b;
}

}  // namespace kuvo

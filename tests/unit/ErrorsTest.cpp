#include <gtest/gtest.h>

#include "core/Errors.h"

namespace kuvo {
namespace {

// Runs `action` and returns the error it raised (number -1 when it raised none).
template <typename Action>
VbError RaisedBy(Action action) {
  try {
    action();
  } catch (const VbError& error) {
    return error;
  }
  return VbError(-1, QStringLiteral("none"));
}

TEST(ErrorsTest, ErrorTextOfKnownNumbers) {
  EXPECT_EQ(ErrorText(5), QStringLiteral("Argument ou appel de procédure incorrect"));
  EXPECT_EQ(ErrorText(6), QStringLiteral("Dépassement de capacité"));
  EXPECT_EQ(ErrorText(9), QStringLiteral("L'indice n'appartient pas à la sélection"));
  EXPECT_EQ(ErrorText(13), QStringLiteral("Incompatibilité de type"));
  EXPECT_EQ(ErrorText(3021), QStringLiteral("Aucun enregistrement en cours."));
  EXPECT_EQ(ErrorText(3421), QStringLiteral("Erreur de conversion de type de données."));
}

TEST(ErrorsTest, ErrorTextOfUnknownNumberIsEmpty) {
  EXPECT_TRUE(ErrorText(12345).isEmpty());
  EXPECT_TRUE(ErrorText(0).isEmpty());
}

TEST(ErrorsTest, RaiseGivesNumberAndStandardText) {
  const VbError error = RaisedBy([] { Raise(Err::TypeMismatch); });
  EXPECT_EQ(error.Number(), 13);
  EXPECT_EQ(error.Description(), QStringLiteral("Incompatibilité de type"));
  EXPECT_STREQ(error.what(), "13 Incompatibilité de type");
}

TEST(ErrorsTest, RaiseWithOwnText) {
  const VbError error = RaisedBy([] { Raise(Err::StoreFailure, QStringLiteral("disque plein")); });
  EXPECT_EQ(error.Number(), 3000);
  EXPECT_EQ(error.Description(), QStringLiteral("disque plein"));
}

TEST(ErrorsTest, ToInt16InRange) {
  EXPECT_EQ(ToInt16(0), 0);
  EXPECT_EQ(ToInt16(32767), 32767);
  EXPECT_EQ(ToInt16(-32768), -32768);
}

TEST(ErrorsTest, ToInt16OverflowRaisesError6) {
  for (long long value : {32768LL, -32769LL, 100000LL}) {
    const VbError error = RaisedBy([value] { ToInt16(value); });
    EXPECT_EQ(error.Number(), 6) << value;
    EXPECT_EQ(error.Description(), QStringLiteral("Dépassement de capacité")) << value;
  }
}

TEST(ErrorsTest, ToInt32Overflow) {
  EXPECT_EQ(ToInt32(2147483647LL), 2147483647);
  EXPECT_EQ(ToInt32(-2147483648LL), -2147483647 - 1);
  EXPECT_EQ(RaisedBy([] { ToInt32(2147483648LL); }).Number(), 6);
  EXPECT_EQ(RaisedBy([] { ToInt32(-2147483649LL); }).Number(), 6);
}

TEST(ErrorsTest, Add16) {
  EXPECT_EQ(Add16(32766, 1), 32767);
  EXPECT_EQ(Add16(-32767, -1), -32768);
  const VbError error = RaisedBy([] { Add16(32767, 1); });
  EXPECT_EQ(error.Number(), 6);
  EXPECT_EQ(error.Description(), QStringLiteral("Dépassement de capacité"));
  EXPECT_EQ(RaisedBy([] { Add16(-32768, -1); }).Number(), 6);
}

TEST(ErrorsTest, Sub16AndMul16) {
  EXPECT_EQ(Sub16(0, 32768), -32768);
  EXPECT_EQ(RaisedBy([] { Sub16(-32768, 1); }).Number(), 6);
  EXPECT_EQ(Mul16(181, 181), 32761);
  EXPECT_EQ(RaisedBy([] { Mul16(182, 181); }).Number(), 6);
}

TEST(ErrorsTest, DivDblByZero) {
  EXPECT_EQ(DivDbl(3, 4), 0.75);
  EXPECT_EQ(RaisedBy([] { DivDbl(3, 0); }).Number(), 11);
  EXPECT_EQ(RaisedBy([] { DivDbl(3, 0); }).Description(), QStringLiteral("Division par zéro"));
  EXPECT_EQ(RaisedBy([] { DivDbl(0, 0); }).Number(), 6);
  EXPECT_EQ(DivDbl(0, 5), 0);
}

}  // namespace
}  // namespace kuvo

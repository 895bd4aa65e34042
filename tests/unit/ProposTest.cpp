// The about window: its animation, its version text and the main window it hides.
#include <gtest/gtest.h>
#include <QTemporaryDir>

#include "ScriptedPlatform.h"
#include "about/Propos.h"
#include "core/MDIKuvo.h"
#include "core/Program.h"
#include "windows/Windows.h"

namespace kuvo {
namespace {

struct ProposFixture : ::testing::Test {
  QTemporaryDir dir;
  ScriptedPlatform platform{dir.path()};
  Program program{platform, AllWindows()};
  Propos& propos = program.Win<Propos>();
};

TEST_F(ProposFixture, FramesRunTwoThreeFourFiveZeroOne) {
  propos.Load();
  EXPECT_EQ(propos.ui().Picture1.Picture, 0);
  EXPECT_EQ(propos.ui().Timer1.Interval, 50);
  const int expected[] = {2, 3, 4, 5, 0, 1, 2, 3, 4, 5, 0, 1, 2};
  for (int frame : expected) {
    propos.ui().Timer1.Tick();
    EXPECT_EQ(propos.ui().Picture1.Picture, frame);
  }
}

TEST_F(ProposFixture, SeventhCellIsNeverShown) {
  propos.Load();
  for (int tick = 0; tick < 200; ++tick) {
    propos.ui().Timer1.Tick();
    EXPECT_GE(propos.ui().Picture1.Picture, 0);
    EXPECT_LE(propos.ui().Picture1.Picture, 5);
  }
}

TEST_F(ProposFixture, EveryOpeningStartsTheAnimationAgain) {
  propos.Load();
  for (int tick = 0; tick < 3; ++tick) propos.ui().Timer1.Tick();
  EXPECT_EQ(propos.ui().Picture1.Picture, 4);
  propos.Unload();
  propos.Load();
  EXPECT_EQ(propos.ui().Picture1.Picture, 0);
  propos.ui().Timer1.Tick();
  EXPECT_EQ(propos.ui().Picture1.Picture, 2);
}

TEST_F(ProposFixture, VersionTextAndTitle) {
  propos.Load();
  EXPECT_EQ(propos.Caption, QStringLiteral("A Propos"));
  EXPECT_FALSE(propos.MDIChild);
  EXPECT_EQ(propos.ui().Label2.Caption, QStringLiteral(" Versión   2.0.0"));
}

TEST_F(ProposFixture, LoadingHidesTheMainWindow) {
  MDIKuvo& main = program.Win<MDIKuvo>();
  main.Visible = true;
  propos.Load();
  EXPECT_FALSE(main.Visible);
}

TEST_F(ProposFixture, LinksGoThroughTheShell) {
  QStringList seen;
  platform.Out = [&seen](const QString& line) { seen << line; };
  propos.Load();
  propos.ui().Label1.Click();
  propos.ui().Label4.Click();
  EXPECT_EQ(seen, QStringList({QStringLiteral("SHELL \"Open\" \"mailto:kuvo@example.org\""),
                               QStringLiteral("SHELL \"Open\" \"https://kuvo.example.org\"")}));
}

}  // namespace
}  // namespace kuvo

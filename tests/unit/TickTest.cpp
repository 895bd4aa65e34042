// The driver's timer events: raised only while the timer runs, as the platform does.
#include <gtest/gtest.h>

#include "TestSupport.h"
#include "about/Propos.h"

namespace kuvo {
namespace {

struct TickFixture : ::testing::Test {
  test::TestApp app;
  Propos& propos = app.program().Win<Propos>();
  int Cell() { return propos.ui().Picture1.Picture; }
};

TEST_F(TickFixture, EachTickIsOneEvent) {
  propos.Load();
  EXPECT_EQ(app.Run(QStringLiteral("tick Propos.Timer1\n")), QString());
  EXPECT_EQ(Cell(), 2);
  app.Run(QStringLiteral("tick Propos.Timer1 4\n"));
  EXPECT_EQ(Cell(), 0);
  app.Run(QStringLiteral("tick Propos.Timer1 0\n"));
  EXPECT_EQ(Cell(), 0);
}

TEST_F(TickFixture, NothingWhileTheTimerIsDisabledOrHasNoInterval) {
  propos.Load();
  propos.ui().Timer1.Enabled = false;
  EXPECT_EQ(app.Run(QStringLiteral("tick Propos.Timer1 3\n")), QString());
  EXPECT_EQ(Cell(), 0);
  propos.ui().Timer1.Enabled = true;
  propos.ui().Timer1.Interval = 0;
  app.Run(QStringLiteral("tick Propos.Timer1 3\n"));
  EXPECT_EQ(Cell(), 0);
  propos.ui().Timer1.Interval = 50;
  app.Run(QStringLiteral("tick Propos.Timer1 3\n"));
  EXPECT_EQ(Cell(), 4);
}

TEST_F(TickFixture, NothingWhileTheWindowIsNotLoaded) {
  EXPECT_EQ(app.Run(QStringLiteral("tick Propos.Timer1 2\n")), QString());
  EXPECT_FALSE(propos.Loaded());
}

TEST_F(TickFixture, AHandlerThatUnloadsItsWindowEndsTheTicks) {
  propos.Load();
  int events = 0;
  propos.ui().Timer1.Tick = [&] {
    if (++events == 2) propos.Unload();
  };
  app.Run(QStringLiteral("tick Propos.Timer1 5\n"));
  EXPECT_EQ(events, 2);
}

TEST_F(TickFixture, OnlyTimersTick) {
  propos.Load();
  EXPECT_THROW(app.Run(QStringLiteral("tick Propos.Ok\n")), ScriptError);
  EXPECT_THROW(app.Run(QStringLiteral("tick Propos.Timer1 -1\n")), ScriptError);
  EXPECT_THROW(app.Run(QStringLiteral("tick Propos.Timer1 1 2\n")), ScriptError);
  EXPECT_THROW(app.Run(QStringLiteral("tick Propos\n")), ScriptError);
  EXPECT_EQ(Cell(), 0);
}

}  // namespace
}  // namespace kuvo

#include "bar/command_edge.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "platform/sim/sim_host.h"

namespace {

TEST(CommandEdge, AutomationFailureIsShownWithItsCodeAndNothingPasses) {
    SimHost host;
    RunAtCommandEdge("OnSaveAll",
                     [] { throw ComError(hr::kCallRejected, L"Call was rejected by callee."); });
    ASSERT_EQ(host.MessageBoxesShown().size(), 1u);
    EXPECT_EQ(host.MessageBoxesShown()[0].text,
              L"Error [0x80010001]\nCall was rejected by callee.");
    EXPECT_TRUE(host.CommandLine().empty());
}

TEST(CommandEdge, AnyOtherFailureBecomesOneLineNamingTheFunction) {
    SimHost host;
    RunAtCommandEdge("HvTabrow::OnSaveAll()", [] { throw std::runtime_error("boom"); });
    RunAtCommandEdge("HvTabrow::OnCloseAll()", [] { throw 42; });
    EXPECT_TRUE(host.MessageBoxesShown().empty());
    EXPECT_EQ(host.CommandLineText(),
              L"Unknown error in HvTabrow::OnSaveAll()!\n"
              L"Unknown error in HvTabrow::OnCloseAll()!\n");
}

TEST(CommandEdge, ShortCodesArePaddedToEightDigits) {
    EXPECT_EQ(ComErrorText(ComError(0x5, L"x")), L"Error [0x00000005]\nx");
}

}  // namespace

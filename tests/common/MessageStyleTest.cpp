// The message-box styles as one table: buttons and their results, icon, default button,
// top-most, and what an unattended run answers.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "common/clsMessageStyle.h"
#include "common/mdlMessage.h"

namespace tovel {
namespace {

std::string Words(const clsMessageStyle& style) {
    std::string words;
    for (const auto& b : style.Buttons()) {
        words += (words.empty() ? "" : ",") + clsMessageStyle::ButtonWord(b.button) + "=" + std::to_string(b.result) + (b.closes ? "" : "(stays)");
    }
    return words;
}

TEST(MessageStyle, ButtonsResultsIconDefaultAndTopMost) {
    const struct {
        int style;
        const char* buttons;
        MessageIcon icon;
        size_t defaultButton;
        bool topMost;
        int unattended;
    } cases[] = {
        {0, "OK=1", MessageIcon::None, 0, false, 1},
        {1, "OK=1,Cancel=2", MessageIcon::None, 0, false, 1},
        {2, "Abort=3,Retry=4,Ignore=5", MessageIcon::None, 0, false, 3},
        {3, "Yes=6,No=7,Cancel=2", MessageIcon::None, 0, false, 6},
        {4, "Yes=6,No=7", MessageIcon::None, 0, false, 6},
        {5, "Retry=4,Cancel=2", MessageIcon::None, 0, false, 4},
        {6, "OK=1", MessageIcon::None, 0, false, 1},
        {7, "OK=1", MessageIcon::None, 0, false, 1},
        {36, "Yes=6,No=7", MessageIcon::Question, 0, false, 6},          // the cancel question
        {4 + 256, "Yes=6,No=7", MessageIcon::None, 1, false, 7},
        {3 + 512 + 48, "Yes=6,No=7,Cancel=2", MessageIcon::Exclamation, 2, false, 2},
        {1 + 16384, "OK=1,Cancel=2,Help=0(stays)", MessageIcon::None, 0, false, 1},
        {1 + 16384 + 512, "OK=1,Cancel=2,Help=0(stays)", MessageIcon::None, 2, false, 1},  // Help as default: unattended takes the first
        {2 + 16384 + 768, "Abort=3,Retry=4,Ignore=5,Help=0(stays)", MessageIcon::None, 3, false, 3},
        {0 + 16384, "OK=1", MessageIcon::None, 0, false, 1},             // no help with the OK set
        {0 + 768, "OK=1", MessageIcon::None, 0, false, 1},               // a fourth button that is not there
        {4 + 512, "Yes=6,No=7", MessageIcon::None, 0, false, 6},
        {16, "OK=1", MessageIcon::Stop, 0, false, 1},
        {64 + 65536, "OK=1", MessageIcon::Information, 0, true, 1},
        {80, "OK=1", MessageIcon::None, 0, false, 1},                    // 16 + 64 is no icon
        {-1, "OK=1", MessageIcon::None, 0, true, 1},                     // every bit: set 7, no icon
    };
    for (const auto& c : cases) {
        const clsMessageStyle style(c.style);
        EXPECT_EQ(Words(style), c.buttons) << c.style;
        EXPECT_EQ(style.Icon(), c.icon) << c.style;
        EXPECT_EQ(style.DefaultButton(), c.defaultButton) << c.style;
        EXPECT_EQ(style.TopMost(), c.topMost) << c.style;
        EXPECT_EQ(style.DefaultResult(), c.unattended) << c.style;
        EXPECT_EQ(DefaultButtonResult(c.style), c.unattended) << c.style;
        EXPECT_EQ(style.ResultOf(style.Buttons().size()), 0) << c.style;
    }
}

} // namespace
} // namespace tovel

#include "adapters/wx/keyCode.h"

#include <gtest/gtest.h>
#include <wx/event.h>

namespace z7::cashflow::wx {
namespace {

std::int32_t codeOf(int key) {
    wxKeyEvent event(wxEVT_CHAR_HOOK);
    event.m_keyCode = key;
    return keyCode(event);
}

TEST(KeyCode, KeysHaveTheNumbersOfThePlatform) {
    EXPECT_EQ(codeOf(WXK_F5), 116);
    EXPECT_EQ(codeOf(WXK_F6), 117);
    EXPECT_EQ(codeOf(WXK_DELETE), 46);
    EXPECT_EQ(codeOf(WXK_NUMPAD_DELETE), 46);
    EXPECT_EQ(codeOf('A'), 65);
}

TEST(KeyCode, SignIsNotTakenForAKeyOfItsNumber) {
    EXPECT_EQ(codeOf('.'), 0); // sign 46, the number of Delete
    EXPECT_EQ(codeOf('t'), 0); // sign 116, the number of F5
    EXPECT_EQ(codeOf('u'), 0); // sign 117, the number of F6
}

} // namespace
} // namespace z7::cashflow::wx

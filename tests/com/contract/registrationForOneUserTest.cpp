#include "com/registration.h"

#include "com/Z7CashFlow.h"

#include <gtest/gtest.h>

#include <array>

namespace z7::com {
namespace {

// What DllRegisterServer does where the machine's registry is closed, which Wine's never is.
TEST(RegistrationForOneUser, MakesTheClassesKnownByNameAndIsTakenBack) {
    const std::wstring path = L"C:\\Z7CashFlow\\Z7CashFlow.dll";
    ASSERT_EQ(registerBelow(HKEY_CURRENT_USER, path), ERROR_SUCCESS);
    CLSID id{};
    EXPECT_EQ(CLSIDFromProgID(L"Z7CashFlow.clsMain", &id), S_OK);
    EXPECT_TRUE(IsEqualGUID(id, CLSID_clsMain));
    std::array<OLECHAR, 39> text{};
    StringFromGUID2(id, text.data(), static_cast<int>(text.size()));
    std::array<wchar_t, MAX_PATH> found{};
    DWORD size = sizeof found;
    const std::wstring server = L"CLSID\\" + std::wstring(text.data()) + L"\\InprocServer32";
    EXPECT_EQ(RegGetValueW(HKEY_CLASSES_ROOT, server.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, found.data(), &size),
              ERROR_SUCCESS);
    EXPECT_EQ(found.data(), path);

    EXPECT_EQ(unregisterBelow(HKEY_CURRENT_USER), ERROR_SUCCESS);
    EXPECT_NE(CLSIDFromProgID(L"Z7CashFlow.clsMain", &id), S_OK);
    EXPECT_EQ(unregisterBelow(HKEY_CURRENT_USER), ERROR_SUCCESS);
}

} // namespace
} // namespace z7::com

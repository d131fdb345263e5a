#include "com/registration.h"

#include "com/Z7CashFlow.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace z7::com {
namespace {

std::wstring ownValue(const std::wstring& key) {
    std::array<wchar_t, MAX_PATH> value{};
    DWORD size = sizeof value;
    const std::wstring path = L"Software\\Classes\\" + key;
    return RegGetValueW(HKEY_CURRENT_USER, path.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, value.data(), &size) ==
                   ERROR_SUCCESS
               ? value.data()
               : L"";
}

// What DllRegisterServer does where the machine's registry is closed. Wine's never is, and its COM does not look here.
TEST(RegistrationForOneUser, WritesWhatAllUsersGetBelowTheUserAndIsTakenBack) {
    const std::wstring path = L"C:\\Z7CashFlow\\Z7CashFlow.dll";
    ASSERT_EQ(registerBelow(HKEY_CURRENT_USER, path), ERROR_SUCCESS);
    const std::wstring id = ownValue(L"Z7CashFlow.clsMain\\CLSID");
    CLSID found{};
    EXPECT_EQ(CLSIDFromString(id.c_str(), &found), S_OK);
    EXPECT_TRUE(IsEqualGUID(found, CLSID_clsMain));
    EXPECT_EQ(ownValue(L"CLSID\\" + id + L"\\InprocServer32"), path);

    EXPECT_EQ(unregisterBelow(HKEY_CURRENT_USER), ERROR_SUCCESS);
    EXPECT_EQ(ownValue(L"Z7CashFlow.clsMain\\CLSID"), L"");
    EXPECT_EQ(ownValue(L"CLSID\\" + id + L"\\InprocServer32"), L"");
    EXPECT_EQ(unregisterBelow(HKEY_CURRENT_USER), ERROR_SUCCESS);
}

} // namespace
} // namespace z7::com

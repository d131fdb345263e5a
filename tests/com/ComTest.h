#pragma once

#include "adapters/ado/automation/Bstr.h"
#include "adapters/ado/automation/ComPtr.h"
#include "adapters/ado/automation/Dispatch.h"
#include "adapters/ado/automation/OwnedVariant.h"
#include "com/Z7CashFlow.h"

#include <gtest/gtest.h>

#include <string>

namespace z7::test {

using adapters::automation::Bstr;
using adapters::automation::ComPtr;
using adapters::automation::Dispatch;
using adapters::automation::OwnedVariant;

/// Z7CashFlow.dll beside the test program, in memory as long as this exists.
class LoadedLibrary {
public:
    LoadedLibrary();
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;
    ~LoadedLibrary();

    /// The path of the DLL.
    [[nodiscard]] static std::wstring path();
    /// What an entry point without arguments returns, such as DllCanUnloadNow.
    [[nodiscard]] HRESULT call(const char* entryPoint) const;
    /// The class object of a class, or the code of the failure in code.
    [[nodiscard]] ComPtr<IClassFactory> factory(REFCLSID classId, HRESULT* code = nullptr) const;
    /// A new object of a class, through one of its interfaces.
    template <class Interface> [[nodiscard]] ComPtr<Interface> create(REFCLSID classId) const {
        ComPtr<Interface> object;
        const HRESULT code = factory(classId)->CreateInstance(nullptr, __uuidof(Interface), object.putVoid());
        EXPECT_EQ(code, S_OK);
        return object;
    }

private:
    HMODULE module_;
};

/// A failure as a host sees it.
struct HostError {
    HRESULT code = S_OK;
    std::string source;
    std::string description;
};

/// The failure that a method has just returned, with what it reported on this thread.
[[nodiscard]] HostError errorOf(HRESULT code);
/// The code of the number of an Error: 0x800A0000 plus the number.
[[nodiscard]] constexpr HRESULT codeOfNumber(int number) {
    return static_cast<HRESULT>(0x800A0000U + static_cast<unsigned>(number));
}

/// Fails the test if a method does not succeed.
#define EXPECT_OK(expression) EXPECT_EQ(expression, S_OK) << errorOf(S_OK).description

/// The value of a property or the result of a method: value<BSTR>([&](BSTR* out) { return row->get_key(out); }).
template <class Out, class Get> [[nodiscard]] Out value(Get&& get) {
    Out out{};
    EXPECT_OK(get(&out));
    return out;
}
/// The same for a text, in UTF-8.
template <class Get> [[nodiscard]] std::string textOf(Get&& get) {
    Bstr text;
    EXPECT_OK(get(text.put()));
    return text.utf8();
}
/// The same for an object.
template <class Interface, class Get> [[nodiscard]] ComPtr<Interface> objectOf(Get&& get) {
    ComPtr<Interface> object;
    EXPECT_OK(get(object.put()));
    return object;
}

/// Whether two pointers lead to the same object.
[[nodiscard]] bool isSameObject(IUnknown* a, IUnknown* b);

/// A thread with COM and the DLL. After each case the DLL must have nothing alive.
class ComTest : public ::testing::Test {
protected:
    ComTest();
    ~ComTest() override;
    void TearDown() override;

    [[nodiscard]] const LoadedLibrary& library() const { return library_; }
    /// A new provider, through its default interface.
    [[nodiscard]] ComPtr<_VoucherProvider> provider() const;
    /// A new collection.
    [[nodiscard]] ComPtr<_CashFlowCollection> collection() const;
    /// A new row in a collection, for a line of the voucher.
    static ComPtr<_CashFlow> addRow(_CashFlowCollection& rows, std::int32_t inid);

private:
    struct Apartment {
        Apartment();
        Apartment(const Apartment&) = delete;
        Apartment& operator=(const Apartment&) = delete;
        ~Apartment();
    };
    Apartment apartment_;
    LoadedLibrary library_;
};

} // namespace z7::test

#include "com/guarded.h"

#include "adapters/ado/automation/Bstr.h"
#include "adapters/ado/automation/ComPtr.h"
#include "z7cashflow/support/Error.h"

#include <exception>
#include <new>
#include <string_view>

namespace z7::com {

namespace {

using adapters::automation::Bstr;
using adapters::automation::ComPtr;

constexpr const char* ownSource = "Z7CashFlow";

void setErrorInfo(REFIID face, std::string_view source, std::string_view description) {
    ComPtr<ICreateErrorInfo> writer;
    if (FAILED(CreateErrorInfo(writer.put()))) {
        return;
    }
    writer->SetGUID(face);
    writer->SetSource(Bstr(source).get());
    writer->SetDescription(Bstr(description).get());
    if (const auto info = writer.as<IErrorInfo>()) {
        SetErrorInfo(0, info.get());
    }
}

HRESULT codeOf(int number) noexcept {
    constexpr int numbersOfHosts = 65535;
    if (number >= 1 && number <= numbersOfHosts) {
        return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number);
    }
    return FAILED(number) ? number : E_FAIL;
}

} // namespace

HRESULT reportException(REFIID face) noexcept {
    // Making the texts may itself run out of memory.
    try {
        try {
            throw;
        } catch (const cashflow::Error& error) {
            setErrorInfo(face, error.source(), error.description());
            return codeOf(error.number());
        } catch (const std::bad_alloc&) {
            SetErrorInfo(0, nullptr);
            return E_OUTOFMEMORY;
        } catch (const std::exception& error) {
            setErrorInfo(face, ownSource, error.what());
            return E_FAIL;
        }
    } catch (...) {
        SetErrorInfo(0, nullptr);
        return E_UNEXPECTED;
    }
}

void raiseHostError(int number, const char* description) { throw cashflow::Error(number, ownSource, description); }

} // namespace z7::com

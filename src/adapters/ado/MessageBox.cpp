#include "adapters/ado/MessageBox.h"

#include "adapters/ado/automation/Bstr.h"
#include "adapters/ado/hostNames.h"
#include "adapters/ado/hostValue.h"

#include <utility>

namespace z7::cashflow::ado {

namespace {

using adapters::automation::Dispatch;
using adapters::automation::wide;

std::int32_t showSystemBox(const std::wstring& prompt, const std::wstring& title, std::int32_t buttons) {
    return MessageBoxW(GetActiveWindow(), prompt.c_str(), title.c_str(), static_cast<UINT>(buttons));
}

} // namespace

MessageBox::MessageBox() : MessageBox(showSystemBox, names::messageBoxClass) {}

MessageBox::MessageBox(SystemBox systemBox, std::wstring programId)
    : systemBox_(std::move(systemBox)), programId_(std::move(programId)) {}

const Dispatch& MessageBox::suiteBox() {
    if (!isSought_) {
        CLSID classId{};
        if (SUCCEEDED(CLSIDFromProgID(programId_.c_str(), &classId))) {
            object_ = Dispatch::create(programId_.c_str());
        }
        isSought_ = true;
    }
    return object_;
}

void MessageBox::locale(const std::string& localeId) {
    if (const Dispatch& box = suiteBox()) {
        box.put(names::locale, localeId);
    }
}

std::int32_t MessageBox::Show(const std::string& prompt, std::int32_t buttons, const std::string& title,
                              const std::string& helpFile, std::int32_t context) {
    if (const Dispatch& box = suiteBox()) {
        return wholeNumber(box.call(names::show, prompt, buttons, title, helpFile, context), names::show);
    }
    return systemBox_(wide(prompt), wide(title), buttons);
}

} // namespace z7::cashflow::ado

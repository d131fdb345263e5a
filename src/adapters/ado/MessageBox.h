#pragma once

#include "adapters/ado/automation/Dispatch.h"
#include "z7cashflow/ports/MessageBox.h"

#include <cstdint>
#include <functional>
#include <string>

namespace z7::cashflow::ado {

/// The suite's message box, created when it is needed first. Where its class is not registered, the system's: modal
/// over the active window of the thread, in the language of the system, without help.
class MessageBox final : public cashflow::MessageBox {
public:
    /// Shows a box of the system: prompt, title, style bits. Returns the number of the button.
    using SystemBox = std::function<std::int32_t(const std::wstring&, const std::wstring&, std::int32_t)>;

    /// With the system's own box.
    MessageBox();
    /// With another box in place of the system's, and with the class of a program identifier in place of the suite's.
    MessageBox(SystemBox systemBox, std::wstring programId);

    void locale(const std::string& localeId) override;
    std::int32_t Show(const std::string& prompt, std::int32_t buttons, const std::string& title,
                      const std::string& helpFile, std::int32_t context) override;

private:
    /// The suite's object; nothing where its class is not registered.
    [[nodiscard]] const adapters::automation::Dispatch& suiteBox();

    SystemBox systemBox_;
    std::wstring programId_;
    adapters::automation::Dispatch object_;
    bool isSought_ = false;
};

} // namespace z7::cashflow::ado

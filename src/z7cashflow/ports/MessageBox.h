#pragma once

#include "z7cashflow/support/visibility.h"

#include <cstdint>
#include <string>

Z7_PUBLIC_BEGIN

namespace z7::cashflow {

/// The suite's message box.
class MessageBox {
public:
    virtual ~MessageBox() = default;
    /// Language of the box's own texts: a locale identifier in decimal, such as "2052".
    virtual void locale(const std::string& localeId) = 0;
    /// Shows the box until it is answered. buttons holds the usual style bits (16 stop sign, 32 question, 64
    /// information, 4 yes and no, 256 second button is the default). Returns the button's number: 1 ok, 6 yes, 7 no.
    virtual std::int32_t Show(const std::string& prompt, std::int32_t buttons, const std::string& title,
                              const std::string& helpFile, std::int32_t context) = 0;
};

} // namespace z7::cashflow

Z7_PUBLIC_END

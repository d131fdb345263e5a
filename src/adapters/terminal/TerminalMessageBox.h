#pragma once

#include "z7cashflow/ports/MessageBox.h"

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>

namespace z7::cashflow::terminal {

/// Options of the message box on a terminal.
struct MessageBoxOptions {
    bool interactive = false; ///< questions wait for an answer; otherwise they return their default button
    bool quiet = false;       ///< notices are not written, and questions return their default button
};

/// The suite's message box on a terminal: notices are lines on standard error, questions are written there and
/// answered from the input stream. The streams are not owned and outlive the box.
///
/// A repeated notice is counted and not written again, because the library may show the same one for every voucher
/// of a run.
class TerminalMessageBox final : public MessageBox {
public:
    TerminalMessageBox(std::istream& input, std::ostream& errors, MessageBoxOptions options);

    /// "2052" selects Chinese; any other value English.
    void locale(const std::string& localeId) override;
    /// Returns 6 (yes) or 7 (no) for a question, 1 for a box with only ok. At the end of the input, and if
    /// there is no terminal, a question returns its default button.
    std::int32_t Show(const std::string& prompt, std::int32_t buttons, const std::string& title,
                      const std::string& helpFile, std::int32_t context) override;

    /// Reports how often each repeated notice came, and resets the counts.
    void reportRepeats();

private:
    [[nodiscard]] std::int32_t ask(const std::string& question, std::int32_t defaultAnswer);
    void note(const std::string& notice);

    std::istream& input_;
    std::ostream& errors_;
    MessageBoxOptions options_;
    bool chinese_ = false;
    std::map<std::string, std::size_t> timesShown_;
    std::size_t unnamed_ = 0; ///< notices in excess of the number of different ones that are remembered
};

} // namespace z7::cashflow::terminal

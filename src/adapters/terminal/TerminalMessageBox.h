#pragma once

#include "z7cashflow/ports/MessageBox.h"

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <map>
#include <string>

namespace z7::cashflow::terminal {

/// How the boxes of a terminal behave.
struct MessageBoxOptions {
    bool interactive = false; ///< questions wait for an answer; else they take their default button
    bool quiet = false;       ///< notices are not written, and questions take their default button
};

/// The suite's message box on a terminal: notices are lines on the error stream, questions are asked there and answered
/// from the input stream. The streams are not owned and outlive the box.
///
/// A notice that comes again is counted and not written again, since the library may show the same one for every
/// voucher of a run.
class TerminalMessageBox final : public MessageBox {
public:
    TerminalMessageBox(std::istream& input, std::ostream& errors, MessageBoxOptions options);

    /// "2052" makes the box speak Chinese; anything else English.
    void Locale(const std::string& localeId) override;
    /// A question answers 6 (yes) or 7 (no), a box with ok alone answers 1. At the end of the input a question takes
    /// its default button, as it does without a terminal.
    std::int32_t Show(const std::string& prompt, std::int32_t buttons, const std::string& title,
                      const std::string& helpFile, std::int32_t context) override;

    /// Writes how often each notice came that came more than once, and forgets all of them.
    void reportRepeats();

private:
    [[nodiscard]] std::int32_t ask(const std::string& question, std::int32_t defaultAnswer);
    void note(const std::string& notice);

    std::istream& input_;
    std::ostream& errors_;
    MessageBoxOptions options_;
    bool chinese_ = false;
    std::map<std::string, std::size_t> timesShown_;
    std::size_t unnamed_ = 0; ///< notices beyond the number of different ones that are remembered
};

} // namespace z7::cashflow::terminal

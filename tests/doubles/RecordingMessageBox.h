#pragma once

#include "z7cashflow/ports/MessageBox.h"

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace z7::cashflow::test {

/// An invisible message box: it records each call as one line and answers from a list, otherwise with 1 (ok).
class RecordingMessageBox final : public MessageBox {
public:
    void locale(const std::string& localeId) override { log.push_back("Locale " + localeId); }
    std::int32_t Show(const std::string& prompt, std::int32_t buttons, const std::string& title,
                      const std::string& helpFile, std::int32_t context) override {
        log.push_back("Show " + prompt + "|" + std::to_string(buttons) + "|" + title + "|" + helpFile + "|" +
                      std::to_string(context));
        if (answers.empty()) {
            return 1;
        }
        const std::int32_t answer = answers.front();
        answers.pop_front();
        return answer;
    }

    std::vector<std::string> log;
    std::deque<std::int32_t> answers;
};

} // namespace z7::cashflow::test

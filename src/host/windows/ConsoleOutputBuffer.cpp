#include "host/windows/ConsoleOutputBuffer.h"

#include "host/windows/wideText.h"

#include <windows.h>

#include <algorithm>
#include <string_view>

namespace z7::cashflow::host {

namespace {

constexpr std::size_t mostPending = 4096;

} // namespace

ConsoleOutputBuffer::~ConsoleOutputBuffer() { write(0); }

ConsoleOutputBuffer::int_type ConsoleOutputBuffer::overflow(int_type character) {
    if (traits_type::eq_int_type(character, traits_type::eof())) {
        return traits_type::not_eof(character);
    }
    const char one = traits_type::to_char_type(character);
    return xsputn(&one, 1) == 1 ? character : traits_type::eof();
}

std::streamsize ConsoleOutputBuffer::xsputn(const char* text, std::streamsize size) {
    pending_.append(text, static_cast<std::size_t>(size));
    return pending_.size() < mostPending || write(incompleteBytes(pending_)) ? size : 0;
}

int ConsoleOutputBuffer::sync() { return write(incompleteBytes(pending_)) ? 0 : -1; }

bool ConsoleOutputBuffer::write(std::size_t keptBytes) {
    const std::wstring wide = wideText(std::string_view(pending_).substr(0, pending_.size() - keptBytes));
    pending_.erase(0, pending_.size() - keptBytes);
    for (std::size_t done = 0; done < wide.size();) {
        const std::size_t part = std::min(wide.size() - done, mostPending);
        DWORD written = 0;
        if (WriteConsoleW(handle_, wide.data() + done, static_cast<DWORD>(part), &written, nullptr) == 0 ||
            written == 0) {
            return false;
        }
        done += written;
    }
    return true;
}

} // namespace z7::cashflow::host

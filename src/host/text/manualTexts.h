#pragma once

#include "host/text/HostText.h"

#include <array>

namespace z7::cashflow::host {

/// Headings of the manual pages, and what they say besides the help.
inline constexpr std::array<HostTextEntry, 13> manualTexts = [] {
    using T = HostText;
    return std::array{
        HostTextEntry{T::manualName, "名称", "NAME"},
        HostTextEntry{T::manualSynopsis, "用法", "SYNOPSIS"},
        HostTextEntry{T::manualArguments, "参数", "ARGUMENTS"},
        HostTextEntry{T::manualOptions, "选项", "OPTIONS"},
        HostTextEntry{T::manualCommands, "命令", "COMMANDS"},
        HostTextEntry{T::manualExamples, "示例", "EXAMPLES"},
        HostTextEntry{T::manualExitStatus, "退出码", "EXIT STATUS"},
        HostTextEntry{T::manualSeeAlso, "参见", "SEE ALSO"},
        HostTextEntry{T::exitDone, "完成", "Done"},
        HostTextEntry{T::exitRefused, "有凭证被拒绝、与现金流量行不相符或不存在，或检查出问题",
                      "A voucher was refused, does not match its rows or does not exist, or a fault was found"},
        HostTextEntry{T::exitUsage, "命令行或其中指定的文件有误",
                      "The command line, or a file that it names, is wrong"},
        HostTextEntry{T::exitDatabase, "数据库、磁盘或输出出错", "The database, the disk or the output failed"},
        HostTextEntry{
            T::exitSignal, "被信号中断：130 为 SIGINT，143 为 SIGTERM，141 为输出的读取方已关闭",
            "Ended by a signal: 130 by SIGINT, 143 by SIGTERM, 141 because the reader of the output went away"},
    };
}();

} // namespace z7::cashflow::host

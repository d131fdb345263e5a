#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

/// Shared by the benchmarks: timing in alternation, medians, and verification of results before figures are
/// printed.
namespace z7::cashflow::bench {

/// The seconds that an action takes.
inline double seconds(const std::function<void()>& action) {
    const auto start = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

inline double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

/// Ends the program unless a result is right: figures of a wrong result are meaningless.
inline void require(bool right, const std::string& what) {
    if (!right) {
        std::fprintf(stderr, "wrong result: %s\n", what.c_str());
        std::exit(1);
    }
}

/// Two ways to the same result, measured in alternation so that a machine that becomes slower affects both.
struct Compared {
    double own = 0.0;   ///< median seconds of the library
    double floor = 0.0; ///< median seconds of the floor
    double ratio = 0.0; ///< median of the ratios of the rounds
};

inline Compared compare(int turns, const std::function<double()>& own, const std::function<double()>& floor) {
    std::vector<double> owns;
    std::vector<double> floors;
    std::vector<double> ratios;
    for (int turn = 0; turn < turns; ++turn) {
        owns.push_back(own());
        floors.push_back(floor());
        ratios.push_back(owns.back() / floors.back());
    }
    return {median(owns), median(floors), median(ratios)};
}

} // namespace z7::cashflow::bench

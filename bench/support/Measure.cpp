#include "bench/support/Measure.h"

#include <algorithm>
#include <chrono>

namespace tarvessa::bench {

double secondsOf(const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

std::vector<double> interleaved(int rounds, const std::vector<Contestant>& contestants) {
    for (const Contestant& contestant : contestants)
        contestant();
    std::vector<std::vector<double>> times(contestants.size());
    for (int round = 0; round < rounds; ++round)
        for (size_t i = 0; i < contestants.size(); ++i)
            times[i].push_back(contestants[i]());
    std::vector<double> medians;
    for (const std::vector<double>& ofOne : times)
        medians.push_back(median(ofOne));
    return medians;
}

Pair paired(int rounds, const Contestant& ours, const Contestant& other) {
    ours();
    other();
    std::vector<double> ofOurs;
    std::vector<double> ofOther;
    std::vector<double> ratios;
    for (int round = 0; round < rounds; ++round) {
        if (round % 2 == 0)
            ofOurs.push_back(ours());
        ofOther.push_back(other());
        if (round % 2 == 1)
            ofOurs.push_back(ours());
        ratios.push_back(ofOurs.back() / ofOther.back());
    }
    return {median(ofOurs), median(ofOther), median(ratios)};
}

} // namespace tarvessa::bench

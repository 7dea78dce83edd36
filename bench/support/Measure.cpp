#include "bench/support/Measure.h"

#include "bench/support/Table.h"

#include <algorithm>
#include <chrono>
#include <ctime>

using namespace Qt::StringLiterals;

namespace tarvessa::bench {

namespace {

using Times = std::vector<std::vector<double>>; // of each contestant, those of its rounds

Times timesOf(int rounds, const std::vector<Contestant>& contestants) {
    for (const Contestant& contestant : contestants)
        contestant();
    Times times(contestants.size());
    for (int round = 0; round < rounds; ++round)
        for (size_t i = 0; i < contestants.size(); ++i)
            times[i].push_back(contestants[i]());
    return times;
}

} // namespace

Taken now() {
    constexpr double nanosecondsPerSecond = 1e9;
    timespec own{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &own);
    const auto elapsed = std::chrono::steady_clock::now().time_since_epoch();
    return {std::chrono::duration<double>(elapsed).count(),
            static_cast<double>(own.tv_sec) + static_cast<double>(own.tv_nsec) / nanosecondsPerSecond};
}

Taken takenBy(const std::function<void()>& work) {
    const Taken begin = now();
    work();
    return now() - begin;
}

double secondsOf(const std::function<void()>& work) {
    return takenBy(work).elapsed;
}

double median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

std::vector<double> interleaved(int rounds, const std::vector<Contestant>& contestants) {
    std::vector<double> medians;
    for (const std::vector<double>& ofOne : timesOf(rounds, contestants))
        medians.push_back(median(ofOne));
    return medians;
}

std::vector<double> least(int rounds, const std::vector<Contestant>& contestants) {
    std::vector<double> minima;
    for (const std::vector<double>& ofOne : timesOf(rounds, contestants))
        minima.push_back(*std::min_element(ofOne.begin(), ofOne.end()));
    return minima;
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

QString Processor::sentence() const {
    return u"processor time is %1 of ours and %2 of the other's, and what differs beyond that is the server's"_s
        .arg(timeText(median(ours)), timeText(median(other)));
}

} // namespace tarvessa::bench

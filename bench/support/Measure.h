#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace tarvessa::bench {

/// One way of doing a job: does it once and gives the seconds that count, so that preparing is left out.
using Contestant = std::function<double()>;

/// A span of time in seconds: by the clock, and of that the processor's time in this process, where driver,
/// reading, filling and painting are, but not the server.
struct Taken {
    double elapsed = 0;
    double own = 0;
};
inline Taken operator-(Taken end, Taken begin) {
    return {end.elapsed - begin.elapsed, end.own - begin.own};
}
inline Taken operator+(Taken one, Taken other) {
    return {one.elapsed + other.elapsed, one.own + other.own};
}

/// This moment; only the difference of two of them means something.
Taken now();

/// What `work` takes.
Taken takenBy(const std::function<void()>& work);

/// Seconds that `work` takes by the steady clock.
double secondsOf(const std::function<void()>& work);

/// The middle value; of an even number of values the mean of the middle two. `values` is not empty.
double median(std::vector<double> values);

/// Lets all contestants work once unmeasured, then `rounds` times in turn, so that what else the machine
/// does meets them alike. Gives each contestant's median in seconds, in the order given.
std::vector<double> interleaved(int rounds, const std::vector<Contestant>& contestants);

/// The same, but gives each contestant's least figure: for processor time, to which others only add.
std::vector<double> least(int rounds, const std::vector<Contestant>& contestants);

/// The processor time of two contestants, collected while their elapsed time is measured.
struct Processor {
    std::vector<double> ours;
    std::vector<double> other;

    /// One sentence about how much of the difference between them is processor time.
    QString sentence() const;
};

/// Two contestants side by side.
struct Pair {
    double ours = 0;  ///< median, seconds
    double other = 0; ///< median, seconds
    double ratio = 0; ///< median of each round's ours / other
};

/// Lets the two work once unmeasured, then `rounds` times one right after the other, each first in every
/// second round. The ratio of neighbours stays what it is while a disk grows slower and faster again.
Pair paired(int rounds, const Contestant& ours, const Contestant& other);

} // namespace tarvessa::bench

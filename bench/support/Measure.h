#pragma once

#include <functional>
#include <vector>

namespace tarvessa::bench {

/// One way of doing a job: does it once and gives the seconds that count, so that preparing is left out.
using Contestant = std::function<double()>;

/// Seconds that `work` takes by the steady clock.
double secondsOf(const std::function<void()>& work);

/// The middle value; of an even number of values the mean of the middle two. `values` is not empty.
double median(std::vector<double> values);

/// Lets all contestants work once unmeasured, then `rounds` times in turn, so that what else the machine
/// does meets them alike. Gives each contestant's median in seconds, in the order given.
std::vector<double> interleaved(int rounds, const std::vector<Contestant>& contestants);

} // namespace tarvessa::bench

#include "PairedRuns.h"

#include "Median.h"

#include <chrono>
#include <vector>

namespace
{

double milliseconds(const std::function<void()> &work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start)
        .count();
}

} // namespace

PairedRuns PairedRuns::measure(int count, const std::function<void()> &first,
                               const std::function<void()> &second)
{
    first();
    second();
    std::vector<double> firsts;
    std::vector<double> seconds;
    std::vector<double> ratios;
    for (int run = 0; run < count; ++run) {
        firsts.push_back(milliseconds(first));
        seconds.push_back(milliseconds(second));
        ratios.push_back(firsts.back() / seconds.back());
    }
    return { median(firsts), median(seconds), median(ratios) };
}

#include "bench/Bench.h"
#include "image/WorkPool.h"

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>
#include <opencv2/core.hpp>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>

namespace bench {

namespace {

std::vector<RowMaker>& makers()
{
    static std::vector<RowMaker> list;
    return list;
}

using Clock = std::chrono::steady_clock;

double once(const std::function<void()>& prepare, const std::function<void()>& body, int repeats)
{
    double best = 0;
    if (prepare) {
        double sum = 0;
        for (int i = 0; i < repeats; ++i) {
            prepare();
            const auto start = Clock::now();
            body();
            sum += std::chrono::duration<double>(Clock::now() - start).count();
        }
        best = sum / repeats;
    } else {
        const auto start = Clock::now();
        for (int i = 0; i < repeats; ++i)
            body();
        best = std::chrono::duration<double>(Clock::now() - start).count() / repeats;
    }
    return best;
}

// Short operations are repeated within a round, so that the clock does not count.
int repeatsFor(const std::function<void()>& prepare, const std::function<void()>& body)
{
    const double seconds = once(prepare, body, 1);
    return std::clamp(int(0.002 / std::max(seconds, 1e-7)), 1, 2000);
}

double median(std::vector<double> values)
{
    std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
    return values[values.size() / 2];
}

struct Result
{
    double ours = 0, peer1 = 0, peer2 = 0, limit = 0;
    double ratio() const { return peer1 > 0 ? ours / std::min(peer1, peer2) : 0; }
};

double least(std::vector<double> values)
{
    return *std::min_element(values.begin(), values.end());
}

Result measure(const Row& row, int rounds, double (*typical)(std::vector<double>))
{
    std::vector<double> ours, peer1, peer2, limit;
    const int oursRepeats = repeatsFor(row.prepare, row.ours);
    const int peerRepeats = row.theirs ? repeatsFor(row.prepareTheirs, row.theirs) : 0;
    const int limitRepeats = row.limit ? repeatsFor({}, row.limit) : 0;
    for (int round = 0; round < rounds; ++round) {
        ours.push_back(once(row.prepare, row.ours, oursRepeats));
        if (row.theirs) {
            cv::setNumThreads(1);
            peer1.push_back(once(row.prepareTheirs, row.theirs, peerRepeats));
            cv::setNumThreads(2);
            peer2.push_back(once(row.prepareTheirs, row.theirs, peerRepeats));
        }
        if (row.limit)
            limit.push_back(once({}, row.limit, limitRepeats));
    }
    Result result;
    result.ours = typical(ours);
    if (row.theirs) {
        result.peer1 = typical(peer1);
        result.peer2 = typical(peer2);
    }
    if (row.limit)
        result.limit = typical(limit);
    return result;
}

std::string machineName()
{
    std::ifstream info("/proc/cpuinfo");
    for (std::string line; std::getline(info, line);)
        if (line.rfind("model name", 0) == 0)
            return line.substr(line.find(':') + 2);
    return "unknown";
}

} // namespace

Register::Register(RowMaker maker)
{
    makers().push_back(std::move(maker));
}

int run(int argc, char** argv)
{
    CLI::App app{"Times Ormalux beside OpenCV, round by round in one process."};
    std::string filter;
    int rounds = 15;
    bool json = false, best = false;
    app.add_option("--filter", filter, "Only rows whose operation contains this text");
    app.add_option("--rounds", rounds, "Interleaved rounds; the median counts")->check(CLI::Range(1, 1000));
    app.add_flag("--best", best, "The best round counts: for machines that do other work, too");
    app.add_flag("--json", json, "One JSON document instead of the table");
    CLI11_PARSE(app, argc, argv);

    std::vector<Row> rows;
    for (const RowMaker& maker : makers())
        maker(rows);
    nlohmann::json document{{"machine", machineName()},
                            {"workers", ormalux::bandCount()},
                            {"statistic", best ? "best" : "median"},
                            {"rows", nlohmann::json::array()}};
    if (!json) {
        std::printf("%s, %d workers, %s of %d rounds\n", machineName().c_str(), ormalux::bandCount(),
                    best ? "best" : "medians", rounds);
        std::printf("%-40s %-12s %10s %10s %10s %10s %7s %7s\n", "operation", "size", "ours ms", "peer1 ms",
                    "peer2 ms", "limit ms", "ratio", "goal");
    }
    int wrong = 0;
    for (const Row& row : rows) {
        if (row.operation.find(filter) == std::string::npos)
            continue;
        if (row.check && !row.check()) {
            std::fprintf(stderr, "%s, %s: the result differs from plain code\n", row.operation.c_str(),
                         row.size.c_str());
            ++wrong;
            continue;
        }
        const Result r = measure(row, rounds, best ? least : median);
        if (json)
            document["rows"].push_back({{"operation", row.operation},
                                        {"size", row.size},
                                        {"peer", row.peer},
                                        {"ours_ms", r.ours * 1e3},
                                        {"peer1_ms", r.peer1 * 1e3},
                                        {"peer2_ms", r.peer2 * 1e3},
                                        {"limit_ms", r.limit * 1e3},
                                        {"ratio", r.ratio()},
                                        {"goal", row.goal}});
        else
            std::printf("%-40s %-12s %10.4f %10.4f %10.4f %10.4f %7.3f %7.3f%s\n", row.operation.c_str(),
                        row.size.c_str(), r.ours * 1e3, r.peer1 * 1e3, r.peer2 * 1e3, r.limit * 1e3,
                        r.ratio(), row.goal, row.goal > 0 && r.ratio() > row.goal ? "  *" : "");
        std::fflush(stdout);
    }
    if (json)
        std::printf("%s\n", document.dump(1).c_str());
    return wrong ? 1 : 0;
}

} // namespace bench

int main(int argc, char** argv)
{
    return bench::run(argc, argv);
}

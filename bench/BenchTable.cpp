// One table of every figure of a run, from the JSON files the benchmark programs wrote
// (--benchmark_out): each benchmark's min, median and max over its repetitions, its reference
// (the *_ms counters) and ratio beside it, its other counters, its target (the label) and the
// machine's load average while it ran.
//   nutrovex_bench_table FILE.json...
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

namespace {

using Json = nlohmann::json;

struct Figure {
    std::string name;
    std::string unit;
    std::string label;
    std::vector<double> times;
    std::map<std::string, std::vector<double>> counters;
};

const std::set<std::string> kFields = {"name",
                                       "family_index",
                                       "per_family_instance_index",
                                       "run_name",
                                       "run_type",
                                       "repetitions",
                                       "repetition_index",
                                       "threads",
                                       "iterations",
                                       "real_time",
                                       "cpu_time",
                                       "time_unit",
                                       "label",
                                       "error_occurred",
                                       "error_message",
                                       "aggregate_name",
                                       "aggregate_unit",
                                       "bytes_per_second",
                                       "items_per_second"};

double median(std::vector<double> v) {
    std::sort(v.begin(), v.end());
    const std::size_t n = v.size();
    return n % 2 == 1 ? v[n / 2] : (v[n / 2 - 1] + v[n / 2]) / 2;
}

// Three significant digits, at most.
std::string number(double x) {
    char buf[32];
    const double a = std::fabs(x);
    const int decimals = a >= 100 || a == 0 ? 0 : a >= 10 ? 1 : a >= 1 ? 2 : 3;
    std::snprintf(buf, sizeof buf, "%.*f", decimals, x);
    return buf;
}

std::string spread(const std::vector<double>& v) {
    return number(*std::min_element(v.begin(), v.end())) + " / " + number(median(v)) + " / " +
           number(*std::max_element(v.begin(), v.end()));
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<Figure> figures;
    std::vector<std::string> loads;
    for (int i = 1; i < argc; ++i) {
        std::ifstream in(argv[i]);
        if (in.peek() == std::ifstream::traits_type::eof()) {
            continue;  // a program none of whose benchmarks was asked for
        }
        Json doc;
        try {
            doc = Json::parse(in);
        } catch (const Json::exception& e) {
            std::fprintf(stderr, "%s: %s\n", argv[i], e.what());
            continue;
        }
        if (doc.contains("context") && doc["context"].contains("load_avg")) {
            const Json& l = doc["context"]["load_avg"];
            if (l.is_array() && !l.empty()) {
                loads.push_back(number(l[0].get<double>()));
            }
        }
        std::map<std::string, std::size_t> index;
        for (const Json& b : doc.value("benchmarks", Json::array())) {
            if (b.value("run_type", "") != "iteration" || b.value("error_occurred", false)) {
                continue;
            }
            const std::string name = b.value("run_name", b.value("name", ""));
            auto found = index.find(name);
            if (found == index.end()) {
                found = index.emplace(name, figures.size()).first;
                figures.push_back({name, b.value("time_unit", "ns"), b.value("label", ""), {}, {}});
            }
            Figure& f = figures[found->second];
            f.times.push_back(b.value("real_time", 0.0));
            for (auto it = b.begin(); it != b.end(); ++it) {
                if (kFields.count(it.key()) == 0 && it->is_number()) {
                    f.counters[it.key()].push_back(it->get<double>());
                }
            }
        }
    }
    std::printf("load average (1 min) as each program started: ");
    for (std::size_t i = 0; i < loads.size(); ++i) {
        std::printf("%s%s", i == 0 ? "" : ", ", loads[i].c_str());
    }
    std::printf(
        "\n\n| figure | min / median / max | reference (median) | ratio min / median / max "
        "| more (median) | target | load avg |\n|---|---|---|---|---|---|---|\n");
    for (const Figure& f : figures) {
        std::string reference;
        std::string ratio;
        std::string more;
        std::string load;
        for (const auto& [name, values] : f.counters) {
            if (name == "ratio") {
                ratio = spread(values);
            } else if (name == "load_avg") {
                load = number(median(values));
            } else if (name.size() > 3 && name.ends_with("_ms")) {
                reference += (reference.empty() ? "" : ", ") + name.substr(0, name.size() - 3) +
                             " " + number(median(values)) + " ms";
            } else {
                more += (more.empty() ? "" : ", ") + name + " " + number(median(values));
            }
        }
        std::printf("| %s | %s %s | %s | %s | %s | %s | %s |\n", f.name.c_str(),
                    spread(f.times).c_str(), f.unit.c_str(), reference.c_str(), ratio.c_str(),
                    more.c_str(), f.label.c_str(), load.c_str());
    }
    return 0;
}

// Runs cases that were computed apart from this program: korvane_vectors [--except FILE] DIR [FILE-or-area...]
// The file of exceptions lists cases that this program deliberately answers otherwise, each with the reason. They count
// as skipped while they differ; one that does not differ any more counts as failed, so that the list stays true.
// Status 0 when nothing failed, 1 when something did, 2 when a file or the command can't be read.
#include "tests/vectors/driver/Areas.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <vector>

namespace korvane::vectors {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t shownFailures = 40;  // of one area

struct Count {
    int passed = 0, failed = 0, skipped = 0;

    Count &operator+=(const Count &other)
    {
        passed += other.passed;
        failed += other.failed;
        skipped += other.skipped;
        return *this;
    }
};

std::string text(const Count &count)
{
    return std::to_string(count.passed) + " passed, " + std::to_string(count.failed) + " failed, "
           + std::to_string(count.skipped) + " skipped";
}

Json load(const fs::path &path)
{
    std::ifstream stream(path);
    if (!stream)
        throw std::runtime_error(path.string() + ": can't be opened");
    try {
        Json file = Json::parse(stream);
        file.at("area").get_ref<const std::string &>();
        if (!file.at("cases").is_array())
            throw std::runtime_error("\"cases\" is not a list");
        return file;
    } catch (const std::exception &problem) {
        throw std::runtime_error(path.string() + ": " + problem.what());
    }
}

Outcome runCase(const CaseRunner &runner, const Json &testCase, const Json &file)
{
    try {
        return runner(testCase, file);
    } catch (const std::exception &problem) {
        return Outcome::fail(std::string("the case can't be run: ") + problem.what());
    }
}

// From area and name of a case to the reason why it is answered otherwise.
using Exceptions = std::map<std::pair<std::string, std::string>, std::string>;

Exceptions loadExceptions(const fs::path &path)
{
    std::ifstream stream(path);
    if (!stream)
        throw std::runtime_error(path.string() + ": can't be opened");
    try {
        Exceptions exceptions;
        for (const Json &each : Json::parse(stream))
            exceptions[{each.at("area"), each.at("case")}] = each.at("reason");
        return exceptions;
    } catch (const Json::exception &problem) {
        throw std::runtime_error(path.string() + ": " + problem.what());
    }
}

Outcome excepted(const Outcome &outcome, const std::string &reason)
{
    if (outcome.kind == Outcome::Kind::passed)
        return Outcome::fail("is listed as an exception, yet it passes");
    return outcome.kind == Outcome::Kind::failed ? Outcome::skip("decided otherwise: " + reason) : outcome;
}

Count runFile(const fs::path &path, const Exceptions &exceptions)
{
    const Json file = load(path);
    const std::string area = file.at("area");
    const CaseRunner runner = runnerOf(area, file);
    Count count;
    std::map<std::string, int> skips;
    std::vector<std::string> failures;
    int number = 0;
    for (const Json &testCase : file.at("cases")) {
        ++number;
        const std::string name = testCase.value("name", testCase.value("function", ""));
        Outcome outcome = runner ? runCase(runner, testCase, file) : Outcome::skip("nothing here runs this area");
        if (const auto found = exceptions.find({area, name}); found != exceptions.end())
            outcome = excepted(outcome, found->second);
        switch (outcome.kind) {
        case Outcome::Kind::passed:
            ++count.passed;
            break;
        case Outcome::Kind::skipped:
            ++count.skipped;
            ++skips[outcome.reason];
            break;
        case Outcome::Kind::failed:
            ++count.failed;
            failures.push_back(std::to_string(number) + " \"" + name + "\": " + outcome.reason);
            break;
        }
    }
    std::printf("%s: %s\n", area.c_str(), text(count).c_str());
    for (const auto &[reason, times] : skips)
        std::printf("  skipped %d: %s\n", times, reason.c_str());
    for (std::size_t i = 0; i < failures.size() && i < shownFailures; ++i)
        std::printf("  FAILED %s\n", failures[i].c_str());
    if (failures.size() > shownFailures)
        std::printf("  FAILED and %zu more\n", failures.size() - shownFailures);
    return count;
}

// The file that the word names: an area, a file of the directory, or a path. Empty when there is none.
fs::path fileNamed(const fs::path &directory, const std::string &word)
{
    for (const fs::path &candidate : {directory / (word + ".json"), directory / word, fs::path(word)})
        if (fs::is_regular_file(candidate))
            return candidate;
    return {};
}

int run(std::vector<std::string> words)
{
    Exceptions exceptions;
    if (words.size() > 1 && words.front() == "--except") {
        exceptions = loadExceptions(words[1]);
        words.erase(words.begin(), words.begin() + 2);
    }
    if (words.empty() || !fs::is_directory(words.front())) {
        std::fprintf(stderr, "usage: korvane_vectors [--except FILE] DIR [FILE-or-area...]\n");
        return 2;
    }
    const fs::path directory = words.front();
    std::vector<fs::path> files;
    Count total;
    for (std::size_t i = 1; i < words.size(); ++i) {
        const fs::path file = fileNamed(directory, words[i]);
        if (file.empty()) {
            std::printf("%s: no such area or file, skipped\n", words[i].c_str());
            ++total.skipped;
        } else {
            files.push_back(file);
        }
    }
    if (words.size() == 1) {
        for (const auto &entry : fs::directory_iterator(directory))
            if (entry.path().extension() == ".json")
                files.push_back(entry.path());
        std::sort(files.begin(), files.end());
    }
    for (const fs::path &file : files)
        total += runFile(file, exceptions);
    std::printf("%s\n", text(total).c_str());
    return total.failed > 0 ? 1 : 0;
}

}  // namespace
}  // namespace korvane::vectors

int main(int argumentCount, char **arguments)
{
    try {
        return korvane::vectors::run({arguments + 1, arguments + argumentCount});
    } catch (const std::exception &problem) {
        std::fflush(stdout);
        std::fprintf(stderr, "korvane_vectors: %s\n", problem.what());
        return 2;
    }
}

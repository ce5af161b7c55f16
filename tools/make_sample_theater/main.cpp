#include "make_sample_theater/SampleTheater.h"
#include "texts/RuntimeError.h"

#include <CLI/CLI.hpp>

#include <chrono>
#include <cstdio>
#include <exception>

namespace {

constexpr int BadArguments = 2;
constexpr int CannotWrite = 3;

void Say(const std::string& line) { std::printf("%s.\n", line.c_str()); }

} // namespace

namespace vardenix {
namespace {

int Run(int argc, char** argv) {
    sample::SampleOptions options;
    std::string out;
    std::string registry;
    CLI::App app("Makes an invented island theater, laid out like an installed game.",
                 "make_sample_theater");
    app.add_option("OUT", out, "Folder that stands for the game's install")->required();
    app.add_option("--seed", options.Seed, "Number that the land grows from")
        ->capture_default_str();
    app.add_option("--posts", options.Posts, "Posts a side, a multiple of 16 up to 2048")
        ->capture_default_str();
    app.add_option("--registry", registry,
                   "Also write the install's registry values to this file, if it is new");
    app.add_flag("--force", options.Force, "Write over a theater that is there");
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& asked) {
        return app.exit(asked);
    } catch (const CLI::ParseError& error) {
        std::fprintf(stderr, "make_sample_theater: %s\n", error.what());
        return BadArguments;
    }
    options.Out = out;
    options.Registry = registry;
    const auto start = std::chrono::steady_clock::now();
    try {
        sample::MakeSampleTheater(options, Say);
    } catch (const RuntimeError& error) {
        const std::string& text =
            error.Detail().empty() ? error.Description() : error.Detail();
        std::fprintf(stderr, "make_sample_theater: %s.\n", text.c_str());
        return error.Number() == ErrorNumber::InvalidCall ? BadArguments : CannotWrite;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "make_sample_theater: %s.\n", error.what());
        return CannotWrite;
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
    std::printf("The theater is in %s; it took %.1f seconds.\n", out.c_str(),
                taken.count());
    return 0;
}

} // namespace
} // namespace vardenix

int main(int argc, char** argv) {
    try {
        return vardenix::Run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "make_sample_theater: %s\n", error.what());
        return CannotWrite;
    }
}

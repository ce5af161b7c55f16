#include "make_sample_world/SampleWorld.h"
#include "texts/RuntimeError.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <exception>

namespace vardenix {
namespace {

constexpr int BadArguments = 2;
constexpr int CannotWrite = 3;

int Run(int argc, char** argv) {
    std::string out;
    uint32_t seed = 7;
    CLI::App app("Draws an invented piece of the earth as maps, for the sample theater.",
                 "make_sample_world");
    app.add_option("OUT", out, "Folder for the maps")->required();
    app.add_option("--seed", seed, "Number that the land grows from")
        ->capture_default_str();
    try {
        app.parse(argc, argv);
    } catch (const CLI::Success& asked) {
        return app.exit(asked);
    } catch (const CLI::ParseError& error) {
        std::fprintf(stderr, "make_sample_world: %s\n", error.what());
        return BadArguments;
    }
    sample::MakeSampleWorld(
        out, seed, [](const std::string& line) { std::printf("%s.\n", line.c_str()); });
    return 0;
}

} // namespace
} // namespace vardenix

int main(int argc, char** argv) {
    try {
        return vardenix::Run(argc, argv);
    } catch (const vardenix::RuntimeError& error) {
        const std::string& text =
            error.Detail().empty() ? error.Description() : error.Detail();
        std::fprintf(stderr, "make_sample_world: %s.\n", text.c_str());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "make_sample_world: %s.\n", error.what());
    }
    return vardenix::CannotWrite;
}

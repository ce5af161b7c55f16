// mea, tc and tm: the small files that are made from the posts of level 2.
#include "cli/Commands.h"
#include "cli/Printing.h"
#include "search/DerivedFiles.h"

#include <functional>
#include <memory>

namespace vardenix {

namespace {

using WriteDerived =
    std::function<void(const ProgramState&, const std::string&, Progress&)>;

void AddDerivedFile(Command& all, const char* name, const char* help,
                    const WriteDerived& write) {
    struct Options {
        explicit Options(Command& command) : Files(command) {}
        TheaterFiles Files;
        std::string Out;
    };
    Command command = all.AddCommand(name, help);
    const auto options = std::make_shared<Options>(command);
    command.Output("OUT", options->Out, "The file to write").Required();
    command.Run([options, write](CommandContext& context) {
        context.Open(options->Files);
        write(context.State, options->Out, context.Progress);
        Print(NameOnDisk(options->Out));
        return ExitDone;
    });
}

} // namespace

void AddDerived(Command& all) {
    AddDerivedFile(all, "mea", "Write the highest elevation of every 8 by 8 posts",
                   [](const ProgramState& state, const std::string& out, Progress& bar) {
                       WriteMEA(state.Terrain, out, bar);
                   });
    AddDerivedFile(all, "tc", "Write how often each tile is used",
                   [](const ProgramState& state, const std::string& out, Progress& bar) {
                       WriteTC(state.Terrain, state.Catalogue.Lookup, out, bar);
                   });
    AddDerivedFile(all, "tm", "Write the tile number of every post",
                   [](const ProgramState& state, const std::string& out, Progress& bar) {
                       WriteTM(state.Terrain, out, bar);
                   });
}

} // namespace vardenix

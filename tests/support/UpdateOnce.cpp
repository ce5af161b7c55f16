// A program of its own for the tests that kill an update. "apply FOLDER": puts the files
// of FOLDER/UpdateTemp in their places, one of them by way of the loader, and deletes
// one; "finish FOLDER": the loader's part; "putback FOLDER": what the program does first
// of all. Exit 0 done, 3 refused with a message on the standard error.
#include "loader/InterruptedUpdate.h"
#include "loader/LoaderList.h"
#include "platform/Registry.h"
#include "texts/RuntimeError.h"
#include "updater/MinorUpdate.h"

#include <cstdio>
#include <string_view>

namespace {

using namespace vardenix;

void Apply(const std::string& folder) {
    const SystemClock clock;
    UpdateLog log(folder, clock);
    FileRegistry registry(folder, folder, {});
    const ProgramFolders folders{folder + "/", folder + "/", {}, folder + "/UpdateTemp/",
                                 {},           {},           {}};
    MinorUpdate update;
    for (const char* name : {"NoTile.jpg", "new file.txt"})
        update.Files[name] = folders.UpdateTempFolder + name;
    update.Files["old.dll"] = "";
    update.Files["vardenix$"] = folders.UpdateTempFolder + "vardenix";
    update.Deferred = {"vardenix$", "*"};
    const auto kept = CarryOut(update, "v3.1.0", folders, registry, log);
}

} // namespace

int main(int count, char** arguments) {
    if (count != 3)
        return 2;
    const std::string_view what = arguments[1];
    try {
        if (what == "apply")
            Apply(arguments[2]);
        else if (what == "finish")
            FinishUpdate(arguments[2]);
        else
            std::puts(PutBackInterrupted(arguments[2]).Told.c_str());
        return 0;
    } catch (const RuntimeError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 3;
    }
}

// Desk.ini of any bytes: it is read, its list is as short as it must be, and a desk that
// has been written once is written the same again.
#include "Require.h"
#include "ScratchFolder.h"
#include "program/DeskFile.h"

#include <cstddef>
#include <cstdint>
#include <set>
#include <span>
#include <string>

using namespace vardenix;

namespace {

Desk DeskOf(const ScratchFolder& folder, std::span<const uint8_t> bytes) {
    folder.Write("Desk.ini", bytes);
    return ReadDesk(folder.Path().string() + "/");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const ScratchFolder folder;
    Desk desk = DeskOf(folder, {data, size});
    Require(desk.Recent.size() <= MostRecent);
    Require(std::set(desk.Recent.begin(), desk.Recent.end()).size() ==
            desk.Recent.size());
    NoteTheater(desk, "/theaters/sorrelund");
    Require(desk.Recent.size() <= MostRecent && desk.Recent[0] == "/theaters/sorrelund");
    const std::string text = DeskText(desk);
    const Desk again =
        DeskOf(folder, {reinterpret_cast<const uint8_t*>(text.data()), text.size()});
    Require(again.Recent[0] == "/theaters/sorrelund");
    Require(again.OneWindow == desk.OneWindow);
    return 0;
}

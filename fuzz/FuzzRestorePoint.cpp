// VXUndo.txt and VXUndo.tmp of any bytes, the first byte telling how long the former is:
// only a file of the posts' own size is restored, to the byte, and any other changes
// nothing.
#include "Require.h"
#include "ScratchFolder.h"
#include "workspace/RestorePoint.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

using namespace vardenix;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const ScratchFolder folder;
    std::filesystem::permissions(folder.Path(), std::filesystem::perms::owner_all);
    const std::span input(data, size);
    const size_t origin = size == 0 ? 0 : std::min<size_t>(data[0], size - 1);
    const auto text = input.subspan(std::min<size_t>(1, size), origin);
    const auto posts = input.subspan(std::min(size, 1 + origin));
    folder.Write("VXUndo.txt", text);
    folder.Write("VXUndo.tmp", posts);
    const std::string path = folder.Path().string() + "/";

    // Few posts, so that inputs find their size.
    Terrain terrain;
    terrain.LxArr = PostArray(4);
    const auto bytes = std::as_writable_bytes(terrain.LxArr.Values());
    const std::vector<std::byte> before(bytes.begin(), bytes.end());
    const Restored result = RestoreFromPoint(terrain, path);
    Require(result != Restored::NoPoint);
    Require((result == Restored::WrongSize) == (posts.size() != bytes.size()));
    Require(std::ranges::equal(bytes, result == Restored::WrongSize
                                          ? std::span<const std::byte>(before)
                                          : std::as_bytes(posts)));

    const auto told = OriginOfPoint(path);
    Require(!told ||
            told->Time + "\n" + told->L2File == std::string(text.begin(), text.end()));
    Require(!RestoreTip(told).empty());
    return 0;
}

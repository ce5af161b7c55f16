#!/usr/bin/env python3
"""build_cost.py [--fixed]: the processor time of a bare release build, as a ratio to compiling a fixed set of
texts before and after it, which takes the machine and what else it does out of the figure. Exit 1 when the
ratio is above the budget. With --fixed the fixed set is timed alone.
"""
import os
import resource
import subprocess
import sys
import tempfile
import time
from pathlib import Path

# A text has the standard headers that most files of the logic reach, and a little code of its own.
FIXED_TEXTS = 8
FIXED = """
#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace fixed {
std::map<std::string, std::vector<int>> Sorted%(n)d(std::span<const std::string> names) {
    std::unordered_map<std::string, int> count;
    for (const std::string& name : names)
        ++count[name];
    std::map<std::string, std::vector<int>> result;
    for (const auto& [name, times] : count)
        result[name.substr(0, %(n)d)].push_back(times);
    for (auto& [name, times] : result)
        std::sort(times.begin(), times.end(), std::greater<>());
    return result;
}
} // namespace fixed
"""
BUDGET = 29  # whole builds in fixed sets


def processor_seconds(work):
    """What the programs that `work` runs take, and how long it is to wait for them."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    begin = time.monotonic()
    work()
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    used = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
    return used, time.monotonic() - begin


def compile_fixed(folder):
    for n in range(FIXED_TEXTS):
        text = Path(folder) / f"fixed{n}.cpp"
        text.write_text(FIXED % {"n": n + 1})
        subprocess.run(["g++", "-std=c++20", "-O3", "-c", str(text), "-o", str(text.with_suffix(".o"))], check=True)


def build(folder):
    environment = os.environ | {"CCACHE_DISABLE": "1"}
    environment.pop("CMAKE_CXX_COMPILER_LAUNCHER", None)
    for command in (["cmake", "--preset", "release", "-B", folder], ["cmake", "--build", folder]):
        subprocess.run(command, env=environment, stdout=subprocess.DEVNULL, check=True)


def main():
    os.chdir(Path(__file__).parent.parent)
    with tempfile.TemporaryDirectory() as folder:
        fixed = [processor_seconds(lambda: compile_fixed(folder))[0]]
        if "--fixed" in sys.argv[1:]:
            print(f"fixed set {fixed[0]:.1f} s")
            return 0
        whole, wall = processor_seconds(lambda: build(folder + "/build"))
        fixed.append(processor_seconds(lambda: compile_fixed(folder))[0])
    ratio = whole / (sum(fixed) / len(fixed))
    print(f"whole {whole:.0f} processor seconds, {wall:.0f} from start to end; "
          f"fixed set {fixed[0]:.1f} and {fixed[1]:.1f}; ratio {ratio:.1f}, budget {BUDGET}")
    return int(ratio > BUDGET)


if __name__ == "__main__":
    sys.exit(main())

#pragma once

#include <string_view>

// For a program that has FaultShim.cpp linked into it: from the next call on, the fault
// comes at the call `at`, counted from 1; see there for the modes.
void ArmFaults(std::string_view mode, int at);

// The calls since then.
int FaultCalls();

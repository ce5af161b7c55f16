#pragma once

#include "app/BinEditor.h"
#include "app/Builder.h"
#include "app/Clipboard.h"
#include "app/Commands.h"
#include "app/Earth.h"
#include "app/Elevations.h"
#include "app/Features.h"
#include "app/History.h"
#include "app/Land.h"
#include "app/MapClicks.h"
#include "app/MapEditor.h"
#include "app/MapKeys.h"
#include "app/Opening.h"
#include "app/Recovery.h"
#include "app/Regions.h"
#include "app/RestorePoints.h"
#include "app/Search.h"
#include "app/Selecting.h"
#include "app/Steps.h"
#include "app/Workspace.h"

#include <functional>
#include <utility>
#include <vector>

namespace vardenix {

// All that works on a theater, joined: what a row of the table of commands is handed.
struct Subsystems {
    // All are borrowed; `exitProgram` ends the program without another question.
    Subsystems(ProgramState& state, const Platform& platform, DebugLog& log,
               std::function<void()> exitProgram,
               std::vector<Command> table = AllCommands())
        : Workspace(state, platform, log, std::move(exitProgram)),
          Commands(*this, std::move(table)) {}
    Subsystems(const Subsystems&) = delete;
    Subsystems& operator=(const Subsystems&) = delete;
    ~Subsystems() { Workspace.ForgetParts(); }

    vardenix::Workspace Workspace;
    vardenix::RestorePoints RestorePoints{Workspace};
    vardenix::Steps Steps{Workspace};
    vardenix::History History{Workspace, Steps, Recovery};
    vardenix::Regions Regions{Workspace};
    vardenix::Features Features{Workspace};
    vardenix::Search Search{Workspace, RestorePoints};
    vardenix::Land Land{Workspace, Search};
    vardenix::Selecting Selecting{Workspace, Land};
    vardenix::Clipboard Clipboard{Workspace, Land};
    vardenix::BinEditor BinEditor{Workspace};
    vardenix::MapEditor MapEditor{Workspace};
    vardenix::Builder Builder{Workspace};
    vardenix::Earth Earth{Workspace};
    vardenix::Elevations Elevations{Workspace, Earth};
    vardenix::Recovery Recovery{Workspace}; // what it adds to others' words comes last
    MapClicks Clicks{Workspace, Regions, Features, Land, Clipboard};
    MapKeys Keys{Workspace};
    vardenix::Opening Opening{Workspace, RestorePoints, Clicks};
    vardenix::Commands Commands;
};

} // namespace vardenix

// The recovery copy of what was typed: kept while data are unsaved, offered by the next start after
// a crash. Sheet pile sections that were added have no file of the user's and stay in it.
#pragma once

#include "commands/run_record.h"

namespace korvane {

/// After a temporary file was made or deleted. This and the next two take no notice of faults: the
/// record stays as it was.
void listTemporaryFiles(Session& session) noexcept;

/// After a screen has closed: unsaved data go into the copy. False where they could not; the copy
/// before stays then, and `copyFault` says why.
bool keepTypedData(Session& session) noexcept;

/// After a command: the copy goes where all is saved and no section was added. False where unsaved
/// data have none.
bool keepAtRest(Session& session) noexcept;

/// Offers the copies of dead programs, one after the other, until one is taken. No removes a copy;
/// Yes goes on with its data as after Edit, over Edit's own screen where they are unfinished, with
/// added sections alone at rest, and then removes it. Copies that this program cannot read stay and
/// are not offered.
void offerRecovery(Session& session, Desktop& desktop, const std::vector<DeadRun>& runs);

/// A signal or a fault ends the process without destructors: temporary files go, the copy stays.
void endEarly(Session& session) noexcept;

/// A signal ends the process: unsaved data go into a rescue file, too.
void rescueAtSignal(Session& session) noexcept;

} // namespace korvane

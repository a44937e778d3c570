#pragma once

#include "db/Contract.h"
#include "db/Project.h"
#include "services/FormProblem.h"

#include <optional>

/// What a project and a contract must hold before they can be saved. The dates are judged together
/// with their texts: a text that is no day is a mistake, not an unset date.
namespace ProjectRules {

enum class ProjectField { Name, ClientName, StartDate, EndDate, Note };
enum class ContractField { Name, PartyB, SignDate, Note };

// Characters.
inline constexpr int longestProjectName = 50;
inline constexpr int longestClientName = 64;
inline constexpr int longestManager = 20;
inline constexpr int longestContractName = 100;
inline constexpr int longestParty = 64;
inline constexpr int longestNote = 500;
/// The largest amount that the forms take, in fen.
inline constexpr qint64 largestAmountFen = 99'999'999'900;

/// The first field that keeps the record from being saved; nothing when it may be.
std::optional<FormProblem<ProjectField>> firstProblem(const Project& project);
std::optional<FormProblem<ContractField>> firstProblem(const Contract& contract);

/// The record as it is stored: names and note without the white space around them; a code as it
/// was typed, unless it is blank.
Project normalized(Project project);
Contract normalized(Contract contract);

} // namespace ProjectRules

// What a study has found, in sentences.
#pragma once

#include "study/finished.h"

#include <string>
#include <vector>

namespace korvane::study {

/// What the study asks: "How far do penetration and maxMoment move when ...?"
std::string questionOf(const Study& study);

/// What it has found, the most important first.
std::vector<std::string> answersOf(const FinishedStudy& finished);

} // namespace korvane::study

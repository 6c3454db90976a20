// What the entries of a study must be to one another.
#pragma once

#include "study/study.h"
#include "study/toml_table.h"

namespace korvane::study {

/// Variants that are counted without loss in any number here.
inline constexpr double MostVariants = 1e15;

/// StudyFault where a tie cannot be beside the variables and ties that are there.
void checkTie(const Study& study, const Tie& tie);

/// Puts each tie behind those of the fields that it follows. StudyFault where ties follow one
/// another in a ring.
void orderTies(Study& study);

/// StudyFault where variables, sizes and limit states do not suit the method; `head` is [study].
void checkStudy(const Study& study, const TomlTable& head);

} // namespace korvane::study

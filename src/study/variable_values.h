// The values and distributions of the variables of a study file.
#pragma once

#include "study/study.h"
#include "study/toml_table.h"

namespace korvane::study {

/// Takes what a variable's table tells of its numbers: values, a range, low and high, or a
/// distribution with its bounds. Throws StudyFault.
void readValues(const TomlTable& entry, Variable& variable);

} // namespace korvane::study

#include "survey/question.h"

#include "runtime/number_text.h"
#include "survey/varying.h"

#include <algorithm>
#include <sstream>

namespace korvane::study {

namespace {

std::string numberText(double value) {
    std::string text;
    appendShortest(text, value);
    return text;
}

/// A text as TOML has it between quotation marks.
std::string quotedText(const std::string& text) {
    static constexpr char Digits[] = "0123456789ABCDEF";
    std::string result = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            result += std::string("\\") + c;
        } else if (byte < 0x20 || byte == 0x7F) {
            result += std::string("\\u00") + Digits[byte / 16] + Digits[byte % 16];
        } else {
            result += c;
        }
    }
    return result + "\"";
}

template <class List, class Text>
std::string listText(const List& list, Text text) {
    std::string result = "[";
    for (const auto& entry : list) {
        result += (result.size() > 1 ? ", " : "") + text(entry);
    }
    return result + "]";
}

std::vector<std::string> fieldsOf(const AskedVariable& variable) {
    std::vector<std::string> names{addressName(variable.address)};
    if (variable.bothSides) {
        names.push_back(addressName(twinOf(variable.address)));
    }
    return names;
}

} // namespace

std::string variableName(const AskedVariable& variable) {
    const FieldRules& rules = rulesOf(variable.address.field);
    if (variable.bothSides) {
        const std::string name = std::string(rules.name) + "_both";
        return rules.hasRows ? name + "_" + std::to_string(variable.address.row) : name;
    }
    std::string name = addressName(variable.address);
    std::replace(name.begin(), name.end(), '.', '_');
    return name;
}

std::string variableTitle(const AskedVariable& variable) {
    const FieldRules& rules = rulesOf(variable.address.field);
    if (!variable.bothSides) {
        return addressName(variable.address);
    }
    const std::string row = rules.hasRows ? "." + std::to_string(variable.address.row) : "";
    return std::string(rules.name) + row + ", both sides";
}

std::vector<double> valuesOf(const AskedVariable& variable) {
    constexpr int Digits = 12;
    std::vector<double> values;
    values.reserve(static_cast<std::size_t>(std::max(variable.steps, 1)));
    const double step = (variable.high - variable.low) / (variable.steps - 1);
    for (int k = 0; k < variable.steps - 1; ++k) {
        values.push_back(roundedTo(variable.low + k * step, Digits));
    }
    values.push_back(variable.high);
    return values;
}

double variantsOf(const Question& question) {
    if (question.asking == Asking::OneAtATime) {
        return 1 + 2 * static_cast<double>(question.variables.size());
    }
    double product = 1;
    for (const AskedVariable& variable : question.variables) {
        product *= variable.steps;
    }
    return product;
}

std::string questionFault(const Question& question) {
    if (question.variables.empty()) {
        return "Tick the numbers that are to vary.";
    }
    if (question.outputs.empty()) {
        return "Tick the outputs to look at.";
    }
    for (const AskedVariable& variable : question.variables) {
        if (!(variable.low < variable.high)) {
            return variableTitle(variable) + ": the low number must be below the high one.";
        }
    }
    if (question.asking == Asking::Grid && variantsOf(question) > MostVariants) {
        return "A grid here has at most 1,000,000 variants; korvane-study takes more.";
    }
    return {};
}

std::string studyText(const Question& question, const std::string& baseName) {
    const bool grid = question.asking == Asking::Grid;
    std::ostringstream text;
    text << "[study]\n"
         << "base = " << quotedText(baseName) << "\n"
         << "method = " << (grid ? "\"grid\"" : "\"one-at-a-time\"") << "\n"
         << "units = " << (question.units == UnitSystem::US ? "\"us\"" : "\"si\"") << "\n"
         << "wedge = " << (question.wedge == WedgeMethod::Sweep ? "\"sweep\"" : "\"fixed\"") << "\n"
         << "outputs = " << listText(question.outputs, quotedText) << "\n";
    for (const AskedVariable& variable : question.variables) {
        text << "\n[[variable]]\n"
             << "name = " << quotedText(variableName(variable)) << "\n"
             << "fields = " << listText(fieldsOf(variable), quotedText) << "\n";
        if (grid) {
            text << "values = " << listText(valuesOf(variable), numberText) << "\n";
        } else {
            text << "low = " << numberText(variable.low) << "\n"
                 << "high = " << numberText(variable.high) << "\n";
        }
    }
    return text.str();
}

} // namespace korvane::study

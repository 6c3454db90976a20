#include "study/draws.h"

#include "runtime/number_text.h"
#include "study/toml_table.h"

#include <openturns/ArcsineMuSigma.hxx>
#include <openturns/BetaMuSigma.hxx>
#include <openturns/DistFunc.hxx>
#include <openturns/DistributionFactory.hxx>
#include <openturns/GammaMuSigma.hxx>
#include <openturns/GumbelMuSigma.hxx>
#include <openturns/LogNormalMuSigma.hxx>
#include <openturns/LogNormalMuSigmaOverMu.hxx>
#include <openturns/NormalCopula.hxx>
#include <openturns/TruncatedDistribution.hxx>
#include <openturns/UniformMuSigma.hxx>
#include <openturns/WeibullMaxMuSigma.hxx>
#include <openturns/WeibullMinMuSigma.hxx>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <functional>
#include <limits>
#include <map>
#include <optional>

namespace korvane::study {

namespace {

/// A distribution by its parameters; throws what OpenTURNS throws.
using Maker = std::function<OT::Distribution(const OT::Point&)>;

/// The name of a parameter for a reader.
std::string parameterText(std::string name) {
    static const std::map<std::string, std::string, std::less<>> meanings{
        {"aLog", "aLog (logarithm of the least value)"},
        {"bLog", "bLog (logarithm of the largest value)"},
        {"muLog", "muLog (mean of the logarithm)"},
        {"sigmaLog", "sigmaLog (deviation of the logarithm)"},
        {"mean", "mean"},
        {"standard_deviation", "deviation"}};
    if (name.ends_with("_0")) { // of the first coordinate: there are no others
        name.resize(name.size() - 2);
    }
    const auto meaning = meanings.find(name);
    return meaning == meanings.end() ? name : meaning->second;
}

/// Parameters that are left out: only a shift at the end, which is zero then.
OT::Point completed(OT::Point given, const OT::Point& usual, const OT::Description& names) {
    while (given.getSize() < usual.getSize() && names[given.getSize()] == "gamma") {
        given.add(0.0);
    }
    if (given.getSize() != usual.getSize()) {
        std::string text;
        for (const OT::String& name : names) {
            text += (text.empty() ? "has the parameters " : ", ") + parameterText(name);
        }
        throw StudyFault{0, text};
    }
    return given;
}

template <class Parameters>
OT::Distribution byParameters(const OT::Point& given) {
    Parameters parameters;
    parameters.setValues(completed(given, parameters.getValues(), parameters.getDescription()));
    return parameters.getDistribution();
}

/// Names and parameters are those of OpenTURNS.
const std::map<std::string, Maker, std::less<>>& makers() {
    static const auto all = [] {
        std::map<std::string, Maker, std::less<>> made{
            {"ArcsineMuSigma", byParameters<OT::ArcsineMuSigma>},
            {"BetaMuSigma", byParameters<OT::BetaMuSigma>},
            {"GammaMuSigma", byParameters<OT::GammaMuSigma>},
            {"GumbelMuSigma", byParameters<OT::GumbelMuSigma>},
            {"LogNormalMuSigma", byParameters<OT::LogNormalMuSigma>},
            {"LogNormalMuSigmaOverMu", byParameters<OT::LogNormalMuSigmaOverMu>},
            {"UniformMuSigma", byParameters<OT::UniformMuSigma>},
            {"WeibullMaxMuSigma", byParameters<OT::WeibullMaxMuSigma>},
            {"WeibullMinMuSigma", byParameters<OT::WeibullMinMuSigma>}};
        for (const OT::DistributionFactory& factory :
             OT::DistributionFactory::GetContinuousUniVariateFactories()) {
            OT::String name = factory.getImplementation()->getClassName();
            name.resize(name.size() - std::string("Factory").size());
            made[name] = [factory](const OT::Point& given) {
                OT::Distribution distribution = factory.build();
                distribution.setParameter(completed(given, distribution.getParameter(),
                                                    distribution.getParameterDescription()));
                return distribution;
            };
        }
        // Estimated from data, not given by a few numbers.
        made.erase("Histogram");
        made.erase("Dirichlet"); // of one variable it is Beta(..., 0, 1)
        return made;
    }();
    return all;
}

std::string_view trimmedView(std::string_view text) {
    const auto blank = [](char c) { return std::isspace(static_cast<unsigned char>(c)) != 0; };
    while (!text.empty() && blank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && blank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// "NAME(1, 2)": the parameters.
OT::Point parametersOf(std::string_view inside) {
    OT::Point parameters;
    for (std::size_t end = 0; end != std::string_view::npos;) {
        end = inside.find(',');
        const std::string_view word = trimmedView(inside.substr(0, end));
        if (!isNumeric(word)) {
            throw StudyFault{0, "must be NAME(NUMBER, ...)"};
        }
        parameters.add(numericValue(word));
        inside.remove_prefix(end == std::string_view::npos ? inside.size() : end + 1);
    }
    return parameters;
}

OT::Distribution unbounded(std::string_view text) {
    text = trimmedView(text);
    const std::size_t open = text.find('(');
    if (open == std::string_view::npos || text.back() != ')') {
        throw StudyFault{0, "must be NAME(NUMBER, ...)"};
    }
    const std::string_view name = trimmedView(text.substr(0, open));
    const auto maker = makers().find(name);
    if (maker == makers().end()) {
        std::vector<std::string_view> known;
        for (const auto& [other, make] : makers()) {
            known.emplace_back(other);
        }
        throw StudyFault{0, unknownText("distribution", name, known)};
    }
    return maker->second(parametersOf(text.substr(open + 1, text.size() - open - 2)));
}

/// Throws StudyFault or what OpenTURNS throws.
OT::Distribution distributionOf(const Variable& variable) {
    OT::Distribution plain = unbounded(variable.distribution);
    const auto& [least, largest] = variable.bounds;
    if (!least && !largest) {
        return plain;
    }
    if (least && largest) {
        return {OT::TruncatedDistribution(plain, *least, *largest)};
    }
    return {least ? OT::TruncatedDistribution(plain, *least, OT::TruncatedDistribution::LOWER)
                  : OT::TruncatedDistribution(plain, *largest, OT::TruncatedDistribution::UPPER)};
}

std::vector<std::size_t> randomVariables(const Study& study) {
    std::vector<std::size_t> all;
    for (std::size_t n = 0; n < study.variables.size(); ++n) {
        if (study.variables[n].isRandom()) {
            all.push_back(n);
        }
    }
    return all;
}

/// Rank correlations of the random variables.
OT::CorrelationMatrix rankMatrix(const Study& study) {
    const std::vector<std::size_t> random = randomVariables(study);
    OT::CorrelationMatrix ranks(random.size());
    const auto place = [&](std::size_t variable) {
        return static_cast<OT::UnsignedInteger>(std::find(random.begin(), random.end(), variable) -
                                                random.begin());
    };
    for (const Correlation& correlation : study.correlations) {
        ranks(place(correlation.first), place(correlation.second)) = correlation.rank;
    }
    return ranks;
}

} // namespace

/// What one thread draws with.
struct Draws::Contents {
    std::vector<std::size_t> variables; ///< random ones, by their index
    std::vector<OT::Distribution> marginals;
    std::vector<std::vector<double>> factor; ///< Cholesky's of the normal correlations, lower
    bool correlated = false;
};

namespace {

/// The correlated normal number of a variable.
double score(const Draws::Contents& contents, const std::vector<double>& normals, std::size_t i) {
    if (!contents.correlated) {
        return normals[i];
    }
    double z = 0;
    for (std::size_t j = 0; j <= i; ++j) {
        z += contents.factor[i][j] * normals[j];
    }
    return z;
}

} // namespace

std::string distributionFault(const Variable& variable) {
    try {
        const OT::Distribution made = distributionOf(variable);
        // Not every distribution looks at its parameters itself.
        const double low = made.computeQuantile(0.05)[0];
        const double high = made.computeQuantile(0.95)[0];
        return std::isfinite(low) && std::isfinite(high) && low < high
                   ? ""
                   : "\"" + variable.distribution + "\" cannot be: its quantiles do not rise";
    } catch (const StudyFault& fault) {
        return fault.text;
    } catch (const std::exception& fault) {
        return std::string("\"") + variable.distribution + "\" cannot be: " + fault.what();
    }
}

bool canBeTogether(const Study& study) {
    try {
        OT::CorrelationMatrix normal =
            OT::NormalCopula::GetCorrelationFromSpearmanCorrelation(rankMatrix(study));
        return normal.isPositiveDefinite();
    } catch (const std::exception&) {
        return false;
    }
}

DistributionFigures figuresOf(const Variable& variable) {
    const OT::Distribution made = distributionOf(variable);
    const auto moment = [](const auto& work) {
        try {
            return static_cast<double>(work());
        } catch (const std::exception&) {
            return std::numeric_limits<double>::quiet_NaN();
        }
    };
    return {.mean = moment([&] { return made.getMean()[0]; }),
            .deviation = moment([&] { return made.getStandardDeviation()[0]; }),
            .low = made.computeQuantile(0.05)[0],
            .high = made.computeQuantile(0.95)[0]};
}

Draws::Draws(const Study& study) : contents_(std::make_unique<Contents>()) {
    Contents& contents = *contents_;
    contents.variables = randomVariables(study);
    for (const std::size_t n : contents.variables) {
        contents.marginals.push_back(distributionOf(study.variables[n]));
    }
    contents.correlated = !study.correlations.empty();
    if (contents.correlated) {
        OT::CorrelationMatrix normal =
            OT::NormalCopula::GetCorrelationFromSpearmanCorrelation(rankMatrix(study));
        const OT::TriangularMatrix factor = normal.computeCholesky();
        for (OT::UnsignedInteger i = 0; i < contents.variables.size(); ++i) {
            std::vector<double> row;
            for (OT::UnsignedInteger j = 0; j <= i; ++j) {
                row.push_back(factor(i, j));
            }
            contents.factor.push_back(std::move(row));
        }
    }
}

Draws::~Draws() = default;

/// Distributions keep what they have worked out: each copy has its own.
Draws::Draws(const Draws& other) : contents_(std::make_unique<Contents>(*other.contents_)) {
    for (OT::Distribution& marginal : contents_->marginals) {
        marginal = OT::Distribution(marginal.getImplementation()->clone());
    }
}

std::size_t Draws::dimension() const {
    return contents_->variables.size();
}

std::size_t Draws::variableOf(std::size_t coordinate) const {
    return contents_->variables[coordinate];
}

void Draws::fromUniforms(const std::vector<double>& uniforms, std::vector<double>& numbers) const {
    if (contents_->correlated) {
        std::vector<double> normals(uniforms.size());
        std::transform(uniforms.begin(), uniforms.end(), normals.begin(),
                       [](double u) { return OT::DistFunc::qNormal(u); });
        fromNormals(normals, numbers);
        return;
    }
    numbers.resize(dimension());
    for (std::size_t i = 0; i < dimension(); ++i) {
        numbers[i] = contents_->marginals[i].computeScalarQuantile(uniforms[i]);
    }
}

void Draws::fromNormals(const std::vector<double>& normals, std::vector<double>& numbers) const {
    numbers.resize(dimension());
    for (std::size_t i = 0; i < dimension(); ++i) {
        const double z = score(*contents_, normals, i);
        // The smaller tail keeps the digits of large numbers.
        const bool tail = z > 0;
        numbers[i] =
            contents_->marginals[i].computeScalarQuantile(OT::DistFunc::pNormal(z, tail), tail);
    }
}

std::vector<double> Draws::scores(const std::vector<double>& normals) const {
    std::vector<double> all;
    for (std::size_t i = 0; i < dimension(); ++i) {
        all.push_back(score(*contents_, normals, i));
    }
    return all;
}

} // namespace korvane::study

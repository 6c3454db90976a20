#include "exact_beam.h"

#include <cstddef>
#include <stdexcept>

namespace korvane::test {

namespace {

std::size_t at(int i) {
    return static_cast<std::size_t>(i);
}

struct Element {
    Rational L, p1, p2;
};

std::vector<Element> elementsOf(const State& state, const BeamRun& run) {
    std::vector<Element> elements(at(run.n));
    for (int e = 1; e < run.n; ++e) {
        const bool last = e == run.n - 1;
        const double z2 =
            last ? state.solution.SolvedBottomElev(run.level) : state.grid.ElevGrid(e + 1);
        const double p2 =
            last ? state.solution.BottomPressure(run.level) : state.net.NetActive(e + 1, 2);
        elements[at(e)] = {Rational(state.grid.ElevGrid(e)) - Rational(z2),
                           Rational(state.net.NetActive(e, 1)), Rational(p2)};
    }
    return elements;
}

Rational loadAt(const BeamRun& run, int i) {
    return i <= static_cast<int>(run.nodeLoads.size()) ? Rational(run.nodeLoads[at(i - 1)])
                                                       : Rational(0);
}

using Matrix = std::vector<std::vector<Rational>>;

std::vector<Rational> eliminate(Matrix A, std::vector<Rational> b) {
    const std::size_t size = b.size();
    for (std::size_t k = 0; k < size; ++k) {
        if (A[k][k].isZero()) {
            throw std::domain_error("zero pivot");
        }
        for (std::size_t row = k + 1; row < std::min(size, k + 4); ++row) {
            const Rational factor = A[row][k] / A[k][k];
            for (std::size_t col = k; col < std::min(size, k + 4); ++col) {
                A[row][col] -= factor * A[k][col];
            }
            b[row] -= factor * b[k];
        }
    }
    for (std::size_t k = size; k-- > 0;) {
        for (std::size_t col = k + 1; col < std::min(size, k + 4); ++col) {
            b[k] -= A[k][col] * b[col];
        }
        b[k] = b[k] / A[k][k];
    }
    return b;
}

} // namespace

ExactBeam exactByStiffness(const State& state, const BeamRun& run) {
    const std::vector<Element> elements = elementsOf(state, run);
    ExactBeam beam{std::vector<std::array<Rational, 4>>(at(run.n)),
                   std::vector<std::array<Rational, 2>>(at(run.n + 1))};
    Matrix A(at(2 * run.n), std::vector<Rational>(at(2 * run.n)));
    std::vector<Rational> b(at(2 * run.n));

    for (int e = 1; e < run.n; ++e) {
        const auto& [L, p1, p2] = elements[at(e)];
        const std::array<Rational, 4> loads = {
            -(Rational(7) * p1 + Rational(3) * p2) * L / Rational(20),
            -(Rational(3) * p1 + Rational(2) * p2) * L * L / Rational(60),
            -(Rational(3) * p1 + Rational(7) * p2) * L / Rational(20),
            (Rational(2) * p1 + Rational(3) * p2) * L * L / Rational(60)};
        beam.forces[at(e)] = loads;
        const Rational a3 = Rational(12) / (L * L * L);
        const Rational b2 = Rational(6) / (L * L);
        const Rational c = Rational(4) / L;
        const Rational d = Rational(2) / L;
        const Rational K[4][4] = {
            {a3, b2, -a3, b2}, {b2, c, -b2, d}, {-a3, -b2, a3, -b2}, {b2, d, -b2, c}};
        const std::size_t first = at(2 * (e - 1));
        for (std::size_t row = 0; row < 4; ++row) {
            for (std::size_t col = 0; col < 4; ++col) {
                A[first + row][first + col] += K[row][col];
            }
            b[first + row] -= loads[row];
        }
    }
    for (int i = 1; i < run.n; ++i) {
        b[at(2 * i - 2)] += loadAt(run, i);
    }

    std::vector<std::size_t> heldRows = {at(2 * run.n - 2)};
    if (run.anchorIndex > 0) {
        heldRows.push_back(at(2 * run.anchorIndex - 2));
    }
    if (run.fixity == 2) {
        heldRows.push_back(at(2 * run.n - 1));
    }
    for (const std::size_t row : heldRows) {
        A[row].assign(at(2 * run.n), Rational(0));
        A[row][row] = 1;
        b[row] = 0;
    }

    const std::vector<Rational> x = eliminate(std::move(A), std::move(b));
    for (int i = 1; i <= run.n; ++i) {
        beam.displacement[at(i)] = {x[at(2 * i - 2)], x[at(2 * i - 1)]};
    }
    for (int e = 1; e < run.n; ++e) {
        const Rational& L = elements[at(e)].L;
        const auto& [y1, r1] = beam.displacement[at(e)];
        const auto& [y2, r2] = beam.displacement[at(e + 1)];
        const Rational dy = y1 - y2;
        const Rational shear = Rational(12) / (L * L * L) * dy + Rational(6) / (L * L) * (r1 + r2);
        const Rational b2 = Rational(6) / (L * L) * dy;
        const Rational d = Rational(2) / L;
        beam.forces[at(e)][0] += shear;
        beam.forces[at(e)][1] += b2 + d * (Rational(2) * r1 + r2);
        beam.forces[at(e)][2] -= shear;
        beam.forces[at(e)][3] += b2 + d * (Rational(2) * r2 + r1);
    }
    return beam;
}

namespace {

/// Shears, moments and displacements of the wall under given node forces, with neither rotation
/// nor deflection at the bottom.
ExactBeam integrate(const std::vector<Element>& elements, const std::vector<Rational>& nodeForce) {
    const int n = static_cast<int>(elements.size());
    ExactBeam beam{std::vector<std::array<Rational, 4>>(at(n)),
                   std::vector<std::array<Rational, 2>>(at(n + 1))};
    Rational V = 0;
    Rational M = 0;
    for (int e = 1; e < n; ++e) {
        const auto& [L, p1, p2] = elements[at(e)];
        V += nodeForce[at(e)];
        beam.forces[at(e)][0] = V;
        beam.forces[at(e)][1] = -M;
        M += V * L + (Rational(2) * p1 + p2) * L * L / Rational(6);
        V += (p1 + p2) * L / Rational(2);
        beam.forces[at(e)][2] = -V;
        beam.forces[at(e)][3] = M;
    }
    for (int e = n - 1; e >= 1; --e) {
        const auto& [L, p1, p2] = elements[at(e)];
        const Rational& shear = -beam.forces[at(e)][2];
        const Rational& moment = beam.forces[at(e)][3];
        const auto& [y, r] = beam.displacement[at(e + 1)];
        beam.displacement[at(e)] = {y - r * L + moment * L * L / Rational(2) -
                                        shear * L * L * L / Rational(6) +
                                        (p1 + Rational(4) * p2) * L * L * L * L / Rational(120),
                                    r - moment * L + shear * L * L / Rational(2) -
                                        (p1 + Rational(3) * p2) * L * L * L / Rational(24)};
    }
    return beam;
}

} // namespace

ExactBeam exactByStatics(const State& state, const BeamRun& run) {
    const std::vector<Element> elements = elementsOf(state, run);
    std::vector<Rational> nodeForce(at(run.n));
    for (int i = 1; i < run.n; ++i) {
        nodeForce[at(i)] = loadAt(run, i);
    }
    if (run.anchorIndex == 0) {
        return integrate(elements, nodeForce);
    }

    Rational h = 0;
    for (int e = run.anchorIndex; e < run.n; ++e) {
        h += elements[at(e)].L;
    }
    nodeForce[at(run.anchorIndex)] = 0;
    const ExactBeam loaded = integrate(elements, nodeForce);
    if (run.fixity == 2) {
        const Rational& y = loaded.displacement[at(run.anchorIndex)][0];
        nodeForce[at(run.anchorIndex)] = -Rational(3) * y / (h * h * h);
        return integrate(elements, nodeForce);
    }
    nodeForce[at(run.anchorIndex)] = -loaded.forces[at(run.n - 1)][3] / h;
    ExactBeam beam = integrate(elements, nodeForce);
    const Rational turn = beam.displacement[at(run.anchorIndex)][0] / h;
    Rational height = 0;
    beam.displacement[at(run.n)][1] += turn;
    for (int i = run.n - 1; i >= 1; --i) {
        height += elements[at(i)].L;
        beam.displacement[at(i)][0] -= turn * height;
        beam.displacement[at(i)][1] += turn;
    }
    return beam;
}

} // namespace korvane::test

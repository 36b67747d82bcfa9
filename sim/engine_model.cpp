#include "sim/engine_model.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <span>

#include "sim/sensors.h"

namespace nerit::sim {

namespace {

// A channel's value at a second of the cycle; between knots the channel moves smoothly.
struct Knot {
  double s;
  double value;
};

// Throttle opening in percent; 3 % is the idle stop.
constexpr Knot kThrottle[] = {
    {0.0, 3},    {4.0, 3},     {4.25, 38}, {4.55, 38}, {4.8, 3},  // free rev
    {7.0, 3},    {7.25, 55},   {7.6, 55},  {7.85, 3},             // a bigger one
    {10.4, 3},   {11.4, 25},   {12.8, 18}, {17.0, 18},            // pull away, cruise
    {17.4, 100}, {24.15, 100}, {24.55, 3}, {36.0, 3},             // pull, lift-off, overrun
};

// Engine speed: it follows the throttle a little later.
constexpr Knot kRpm[] = {
    {0.0, 850},  {4.1, 850},   {4.9, 3000},  {6.4, 850},   {7.1, 850},   {8.1, 4200}, {9.9, 850},
    {10.6, 850}, {12.6, 2400}, {17.1, 2500}, {24.0, 6500}, {30.0, 1400}, {31.5, 850}, {36.0, 850},
};

// Manifold pressure, absolute: vacuum at idle, deeper on a closed throttle at speed, boost on
// the pull as the turbo spools up.
constexpr Knot kMapKpa[] = {
    {0.0, 33},    {4.0, 33},   {4.3, 72},  {4.55, 62},  {4.85, 24},  {5.8, 27},   {6.4, 33},
    {7.0, 33},    {7.3, 88},   {7.6, 78},  {7.9, 22},   {9.0, 25},   {9.9, 33},   {10.4, 33},
    {11.4, 62},   {12.8, 55},  {17.0, 55}, {17.5, 100}, {19.0, 140}, {21.0, 185}, {23.0, 198},
    {24.15, 200}, {24.75, 22}, {30.0, 23}, {31.5, 33},  {36.0, 33},
};

constexpr double kCycleS = kDriveCycleMs / 1000;
constexpr double kIdleHuntS = 1.5;  // the idle speed hunts a little; 24 times a cycle

double cycle_s(double t_ms) {
  double t = std::fmod(t_ms, kDriveCycleMs);
  if (t < 0) t += kDriveCycleMs;
  return t / 1000;
}

double secant(std::span<const Knot> k, std::size_t i) {
  return (k[i + 1].value - k[i].value) / (k[i + 1].s - k[i].s);
}

// The slope at knot i: flat at a peak, a valley or an end, otherwise a weighted harmonic mean
// of the neighbouring secants, which keeps the curve from overshooting its knots.
double slope(std::span<const Knot> k, std::size_t i) {
  if (i == 0 || i + 1 == k.size()) return 0;
  const double before = secant(k, i - 1), after = secant(k, i);
  if (before * after <= 0) return 0;
  const double h0 = k[i].s - k[i - 1].s, h1 = k[i + 1].s - k[i].s;
  const double w0 = 2 * h1 + h0, w1 = h1 + 2 * h0;
  return (w0 + w1) / (w0 / before + w1 / after);
}

// A monotone cubic through the knots: value and slope are continuous, and both ends are flat,
// so the cycle joins itself without a step.
double follow(std::span<const Knot> k, double s) {
  const auto next = std::upper_bound(k.begin(), k.end(), s,
                                     [](double at, const Knot& knot) { return at < knot.s; });
  if (next == k.begin()) return k.front().value;
  if (next == k.end()) return k.back().value;
  const auto i = static_cast<std::size_t>(next - k.begin() - 1);
  const double h = k[i + 1].s - k[i].s;
  const double u = (s - k[i].s) / h;
  const double u2 = u * u, u3 = u2 * u;
  // Between two equal flat knots this is exactly their value: a held throttle reads its raw.
  return k[i].value + (k[i + 1].value - k[i].value) * (3 * u2 - 2 * u3) +
         h * (slope(k, i) * (u3 - 2 * u2 + u) + slope(k, i + 1) * (u3 - u2));
}

double map_at(double s) {
  return follow(kMapKpa, s);
}

// 0 on overrun, 1 at full boost.
double load_share(double map_kpa) {
  return std::clamp((map_kpa - 22) / (200 - 22), 0.0, 1.0);
}

}  // namespace

EngineState engine_state_at(double t_ms) {
  static_assert(kThrottle[std::size(kThrottle) - 1].s == kCycleS);
  static_assert(kRpm[std::size(kRpm) - 1].s == kCycleS);
  static_assert(kMapKpa[std::size(kMapKpa) - 1].s == kCycleS);
  const double s = cycle_s(t_ms);
  EngineState e;
  e.rpm = follow(kRpm, s) + 10 * std::sin(2 * std::numbers::pi * s / kIdleHuntS);
  e.throttle_percent = follow(kThrottle, s);
  e.map_kpa = map_at(s);
  e.injector_in_us = 1800 + 40 * (e.map_kpa - 30);
  e.airflow_hz = airflow_hz(e.rpm, (e.map_kpa - 20) / 230);
  // The sensor on analog input 3 reads the load 0.4 s late.
  e.analog3_volts = 0.8 + 3.0 * load_share(map_at(cycle_s(t_ms - 400)));
  return e;
}

}  // namespace nerit::sim

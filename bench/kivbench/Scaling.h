#pragma once

/// Benchmarks of paths that once took time quadratic in the input, each at N and 2N ("scaling/PATH/N"):
/// the time should double from one to the other, not quadruple. Inputs are built in memory.
void registerScalingBenchmarks();

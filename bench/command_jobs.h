/// @file A command over the pipe, and bare exchanges of the same bytes.
#pragma once

#include <functional>
#include <string>

#include "bench_home.h"

/// One exchange with a server of its own, over a connection that is kept.
/// @param kind "ours", "overlapped" or "blocking".
std::function<void()> MakeCommandJob(const std::string& kind, const BenchHome& home);

/// @file What every test program does.
#pragma once

#include <string_view>

/// Runs the tests that the command line names. The program ends early if it crashes, or if it runs longer
/// than the environment variable TEST_SECONDS allows. It then writes the name of the test and the stack of
/// the thread that crashed, or of all threads, to the standard error stream.
/// With the environment variable HEAP_CHECK_INTERVAL it ends, too, at damaged memory (heap_check.h).
/// @return the exit code of the program.
int RunTests(int argc, char** argv);

/// The report of a crash or hang names `step`, what the running test does now; empty: nothing. For tests that
/// do a thing many times.
void SetRunningStep(std::string_view step);

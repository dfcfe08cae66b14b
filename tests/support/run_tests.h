/// @file What every test program does.
#pragma once

/// Runs the tests that the command line names. A crash, and a run that takes longer than the environment
/// variable TEST_SECONDS allows, end the program with the name of the test and the stacks of its threads on
/// the standard error stream.
/// @return the exit code of the program.
int RunTests(int argc, char** argv);

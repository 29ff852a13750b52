# The Debian packages that Tabulet needs, one "name|reason" a line; sourced by run and test.
# shellcheck shell=bash disable=SC2034

# To build the program and start it.
runPackages=(
    "build-essential|the C++ compiler"
    "cmake|configures the build"
    "ninja-build|runs the build"
    "pkg-config|finds libraries"
    "ccache|makes repeated builds fast"
    "lld|links fast"
    "libutf8proc-dev|Unicode rules"
    "libxxhash-dev|tells whether a file has changed"
    "libxcb1-dev|tells the desktop that the program has started"
    "qt6-base-dev|windows"
    "qt6-l10n-tools|message catalogues"
    "qt6-tools-dev|message catalogues"
    "qt6-tools-dev-tools|message catalogues"
    "libqt6svg6|draws the icons"
)

# To show it on a Wayland desktop natively.
waylandPackages=(
    "qt6-wayland|windows on Wayland"
)

# To show it without a display.
displayPackages=(
    "xvfb|a virtual display"
    "openbox|a window manager for it"
    "x11-utils|asks whether the window manager is ready"
    "fonts-dejavu-core|text in the picture"
    "fonts-droid-fallback|Chinese, Japanese and Korean text, and the wide plus sign"
)

# To make the pictures of the documentation.
picturePackages=(
    "xdotool|keys and clicks for real windows"
    "dbus-daemon|a message bus for the desktop's settings"
    "python3-dbus|says on it whether windows are dark"
    "python3-gi|waits for the question"
    "imagemagick|takes the pictures and makes them small"
)

# To run the tests.
testPackages=(
    "git|lists the files to check"
    "libgtest-dev|tests of the library"
    "libgmock-dev|tests of the library"
    "libbenchmark-dev|the benchmarks build with the tests"
    "libpugixml-dev|the benchmarks' yardstick"
    "xdotool|keys and clicks for real windows"
    "xclip|another program at the clipboard"
    "dbus-daemon|a message bus for the screen reader"
    "dbus-bin|says on it that there is a screen reader"
    "at-spi2-core|the bus that screen readers listen to"
    "python3-pyatspi|reads the windows as a screen reader does"
    "imagemagick|a picture of the screen where a test of a window fails"
    "python3-xlib|hears when a start is over"
    "strace|makes calls of the system fail while a file is saved"
    "sway|a Wayland compositor without a screen"
    "qt6-wayland|windows on it"
    "shared-mime-info|the desktop's own types of files"
    "libglib2.0-bin|asks what the desktop takes files for"
    "desktop-file-utils|checks the desktop entry, and lists what opens which files"
    "appstream|checks the metainfo"
    "libxml2-utils|checks the MIME types and the icons"
    "mandoc|checks the manual page"
    "locales|a locale whose decimal point is a comma"
    "clang-format-14|checks the layout of the code"
    "clang-tidy-14|checks the code for mistakes"
)

# For the long run of the tests.
longPackages=(
    "clang|the compiler with libFuzzer"
    "clang-19|a new compiler for those who use the library"
    "doxygen|the library's reference"
    "lintian|checks the packages"
    "mmdebstrap|a fresh Debian to install them in"
)

# To build Debian packages.
packagePackages=(
    "debhelper|builds the packages"
    "dpkg-dev|builds the packages"
)

# Installs the Debian packages that quorel's build needs, when they are missing.
# Sourced by the other scripts: install_packages PACKAGE...
install_packages() {
    local missing=()
    local package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    echo "Installing Debian packages: ${missing[*]}"
    local sudo=""
    if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# What building the library takes.
QUOREL_BUILD_PACKAGES=(g++ cmake ninja-build pkg-config libboost-thread-dev uuid-dev)
# What the tests take beyond that.
QUOREL_TEST_PACKAGES=(libgtest-dev unicode-data libtiff-tools libglib2.0-dev)

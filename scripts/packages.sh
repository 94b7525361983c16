# The Debian packages the program builds and runs with. Sourced by the scripts.
BUILD_PACKAGES=(cmake g++ make pkg-config qt6-base-dev libqt6sql6-sqlite libpulse-dev libsndfile1-dev
                fonts-liberation)
# Also needed by the tests.
TEST_PACKAGES=(desktop-file-utils)

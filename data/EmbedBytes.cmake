# Writes a C++ source that holds a file's bytes.
#   cmake -DIN=FoodDB.ddb -DOUT=ShippedCatalogue.cpp -P EmbedBytes.cmake
file(READ "${IN}" hex HEX)
string(LENGTH "${hex}" digits)
math(EXPR size "${digits} / 2")
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${hex}")
string(REGEX REPLACE "(0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,)" "\\1\n" bytes "${bytes}")
file(WRITE "${OUT}" "// Generated from ${IN} at build time; do not edit.
#include \"data/ShippedCatalogue.h\"

namespace nutrovex {

namespace {

alignas(8) const uint8_t kShippedCatalogue[${size}] = {
${bytes}};

}  // namespace

std::span<const uint8_t> shippedCatalogue() {
    return kShippedCatalogue;
}

}  // namespace nutrovex
")

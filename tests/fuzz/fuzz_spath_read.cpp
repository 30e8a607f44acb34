// Feeds arbitrary bytes to the path reader. Beyond the sanitizers' own checks it asserts that a
// stream read without error survives being written and read again unchanged.

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <list>
#include <sstream>
#include <string>

#include "simplepath/interfaces/BinaryDeserializer.h"
#include "simplepath/interfaces/BinarySerializer.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathSerializer.h"

namespace {

void require(bool condition) {
    if (!condition) {
        __builtin_trap();
    }
}

// Bit-identical, or equal as numbers: a handle at -0.0 on an anchor at +0.0 is written as retracted
// and so comes back with the anchor's zero.
bool same(double a, double b) {
    return std::memcmp(&a, &b, sizeof a) == 0 || a == b;
}

bool same(DPoint const& a, DPoint const& b) {
    return same(a.x, b.x) && same(a.y, b.y);
}

SimplePath* readPath(std::string const& bytes, SimplePathSerializer::Result& result) {
    std::istringstream in(bytes);
    BinaryDeserializer deserializer(in);
    PHashablePointer<SimplePath> path;
    result = SimplePathSerializer::readNew(deserializer, path);
    return path.getPointer();
}

void checkRewrite(SimplePath& path) {
    std::ostringstream out;
    BinarySerializer serializer(out);
    require(SimplePathSerializer::write(&path, serializer) == SimplePathSerializer::Success);
    SimplePathSerializer::Result result = SimplePathSerializer::Failure;
    SimplePath* const again = readPath(out.str(), result);
    require(result == SimplePathSerializer::Success && again != nullptr);
    require(again->isClosedSimplePath() == path.isClosedSimplePath());
    std::list<SimplePathLocationTriple> before;
    std::list<SimplePathLocationTriple> after;
    path.getLocationTripleList(before);
    again->getLocationTripleList(after);
    require(before.size() == after.size());
    for (auto b = before.begin(), a = after.begin(); b != before.end(); ++b, ++a) {
        require(same(b->first, a->first) && same(b->anchor, a->anchor) && same(b->last, a->last));
        require(b->mode == a->mode);
    }
    delete again;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
    SimplePathSerializer::Result result = SimplePathSerializer::Failure;
    SimplePath* const path = readPath(std::string(reinterpret_cast<char const*>(data), size), result);
    // The binary reader reports every failure as status 1, so no other result may come out.
    require(result == SimplePathSerializer::Success || result == SimplePathSerializer::Failure);
    if (result == SimplePathSerializer::Success) {
        require(path != nullptr);
        checkRewrite(*path);
    }
    delete path;
    return 0;
}

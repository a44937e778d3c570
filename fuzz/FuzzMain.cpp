#include "FuzzTargets.h"

#include <algorithm>
#include <cstdint>

using namespace Qt::StringLiterals;

namespace {

const FuzzTargets::Target& target()
{
    const auto targets = FuzzTargets::all();
    const auto found
        = std::find_if(targets.begin(), targets.end(), [](const FuzzTargets::Target& each) {
              return each.name == QStringLiteral(BRIXA_FUZZ_TARGET);
          });
    if (found == targets.end())
        qFatal("There is no target of this name");
    return *found;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const FuzzTargets::Target& chosen = target();
    chosen.run(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    return 0;
}

// `String` against the standard library's.
#include <string>

#include "Comparison.h"
#include "foundation/String.h"

namespace corvane::bench {

namespace {

constexpr std::size_t mebibyte = std::size_t{1} << 20;
constexpr std::size_t pieceSize = 4096;
const std::string piece(pieceSize, 'x');

template <class Text>
void copyOften(const Text& original) {
    for (int i = 0; i < 100000; ++i) {
        const Text copy(original);
        benchmark::DoNotOptimize(&copy);
    }
}

void wholeCopies(benchmark::State& state) {
    const std::string theirs(pieceSize, 'x');
    const String ours(pieceSize, 'x');
    compare(state, {"std::string", [&] { copyOften(ours); }, [&] { copyOften(theirs); }});
}
BENCHMARK(wholeCopies)->Name("String: 100000 copies of 4 KiB")->Iterations(11)->UseManualTime();

template <class Text>
void appendCharacters(std::size_t size) {
    Text text;
    for (std::size_t i = 0; i < size; ++i)
        text += static_cast<char>('a' + i % 26);
    benchmark::DoNotOptimize(&text);
}

void characters(benchmark::State& state) {
    compare(state, {"std::string", [] { appendCharacters<String>(16 * mebibyte); },
                    [] { appendCharacters<std::string>(16 * mebibyte); }});
}
BENCHMARK(characters)->Name("String: 16 MiB by characters")->Iterations(7)->UseManualTime();

template <class Text>
void appendPieces(std::size_t size) {
    Text text;
    for (std::size_t length = 0; length < size; length += pieceSize)
        text.append(piece.data(), pieceSize);
    benchmark::DoNotOptimize(&text);
}

void pieces(benchmark::State& state) {
    const auto size = static_cast<std::size_t>(state.range()) * mebibyte;
    compare(state, {"std::string", [=] { appendPieces<String>(size); },
                    [=] { appendPieces<std::string>(size); }});
}
BENCHMARK(pieces)->Name("String: 64 MiB by 4096 bytes")->Arg(64)->Iterations(7)->UseManualTime();
BENCHMARK(pieces)->Name("String: 1 GiB by 4096 bytes")->Arg(1024)->Iterations(5)->UseManualTime();

}  // namespace

}  // namespace corvane::bench

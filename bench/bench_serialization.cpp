// Writing and reading path streams, and taking and restoring mementos, against plain memory copies of
// the same number of bytes.

#include <benchmark/benchmark.h>

#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "simplepath/interfaces/BinaryDeserializer.h"
#include "simplepath/interfaces/BinarySerializer.h"
#include "simplepath/path/SimplePath.h"
#include "simplepath/path/SimplePathMemento.h"
#include "simplepath/path/SimplePathSerializer.h"

namespace {

// A wavy open path: every fourth vertex has retracted handles (a short record), the rest full ones.
void buildPath(SimplePath& path, int n) {
    SimplePathVertex *f = nullptr, *a = nullptr, *l = nullptr;
    for (int i = 0; i < n; ++i) {
        double const x = i * 0.731;
        double const y = (i % 7) * 1.25;
        double const h = i % 4 == 0 ? 0.0 : 0.3;
        // Timed for speed only; the unit tests check what this call answers.
        (void)path.addTriple({x - h, y + h}, f, {x, y}, a, {x + h, y - h}, l,
                             static_cast<SimplePathVertexTriple::VertexTripleMode>(i % 3));
    }
}

// A host's own stream over a memory block, without iostreams: what the path code itself costs once the
// stream is cheap. Same byte layout as BinarySerializer on a little-endian machine.
class MemorySerializer : public Serializer {
  public:
    explicit MemorySerializer(std::vector<unsigned char>& bytes) : out(bytes) {}
    int writeInt(std::int32_t value) override { return put(&value, sizeof value); }
    int writeCoordinate(double value) override { return put(&value, sizeof value); }
    int writeDouble(double value) override { return put(&value, sizeof value); }
    int writeByte(std::uint8_t value) override { return put(&value, 1); }
    int writeString(PString const& value) override {
        auto const length = static_cast<std::int32_t>(value.length());
        return put(&length, sizeof length) | put(value.c_str(), value.length());
    }

  private:
    int put(void const* data, std::size_t size) {
        auto const* bytes = static_cast<unsigned char const*>(data);
        out.insert(out.end(), bytes, bytes + size);
        return 0;
    }
    std::vector<unsigned char>& out;
};

class MemoryDeserializer : public Deserializer {
  public:
    explicit MemoryDeserializer(std::string const& bytes)
        : at(bytes.data()), end(bytes.data() + bytes.size()) {}
    int readInt(std::int32_t& value) override { return take(&value, sizeof value); }
    int readCoordinate(double& value) override { return take(&value, sizeof value); }
    int readDouble(double& value) override { return take(&value, sizeof value); }
    int readByte(std::uint8_t& value) override { return take(&value, 1); }
    int readString(PString& value) override {
        std::int32_t length = 0;
        if (take(&length, sizeof length) != 0 || length < 0 || length > end - at) {
            return 1;
        }
        value = PString(std::string(at, at + length));
        at += length;
        return 0;
    }

  private:
    int take(void* data, std::size_t size) {
        if (static_cast<std::size_t>(end - at) < size) {
            return 1;
        }
        std::memcpy(data, at, size);
        at += size;
        return 0;
    }
    char const* at;
    char const* end;
};

std::string streamOf(SimplePath& path) {
    std::ostringstream out;
    BinarySerializer serializer(out);
    // Timed for speed only; the unit tests check what this call answers.
    (void)SimplePathSerializer::write(&path, serializer);
    return out.str();
}

void BM_WriteStream(benchmark::State& state) {
    SimplePath path;
    buildPath(path, static_cast<int>(state.range(0)));
    std::size_t const bytes = streamOf(path).size();
    for (auto _ : state) {
        std::ostringstream out;
        BinarySerializer serializer(out);
        benchmark::DoNotOptimize(SimplePathSerializer::write(&path, serializer));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}

// readNew into a new path, which is freed outside the timing.
void BM_ReadStream(benchmark::State& state) {
    SimplePath source;
    buildPath(source, static_cast<int>(state.range(0)));
    std::string const bytes = streamOf(source);
    for (auto _ : state) {
        std::istringstream in(bytes);
        BinaryDeserializer deserializer(in);
        PHashablePointer<SimplePath> path;
        benchmark::DoNotOptimize(SimplePathSerializer::readNew(deserializer, path));
        state.PauseTiming();
        delete path.getPointer();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes.size()));
}

// The same into one stream rewound each time, so that its buffer has already grown to size.
void BM_WriteStreamRewound(benchmark::State& state) {
    SimplePath path;
    buildPath(path, static_cast<int>(state.range(0)));
    std::size_t const bytes = streamOf(path).size();
    std::ostringstream out;
    for (auto _ : state) {
        out.seekp(0);
        BinarySerializer serializer(out);
        benchmark::DoNotOptimize(SimplePathSerializer::write(&path, serializer));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}

void BM_WriteMemory(benchmark::State& state) {
    SimplePath path;
    buildPath(path, static_cast<int>(state.range(0)));
    std::size_t const bytes = streamOf(path).size();
    std::vector<unsigned char> out;
    out.reserve(bytes);
    for (auto _ : state) {
        out.clear();
        MemorySerializer serializer(out);
        benchmark::DoNotOptimize(SimplePathSerializer::write(&path, serializer));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}

// readNew's work through a memory stream: what remains is the reader and the vertex allocations.
void BM_ReadMemory(benchmark::State& state) {
    SimplePath source;
    buildPath(source, static_cast<int>(state.range(0)));
    std::string const bytes = streamOf(source);
    for (auto _ : state) {
        state.PauseTiming();
        auto path = std::make_unique<SimplePath>();
        state.ResumeTiming();
        MemoryDeserializer deserializer(bytes);
        benchmark::DoNotOptimize(SimplePathSerializer::read(path.get(), deserializer));
        state.PauseTiming();
        path.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes.size()));
}

void BM_CreateMemento(benchmark::State& state) {
    SimplePath path;
    buildPath(path, static_cast<int>(state.range(0)));
    for (auto _ : state) {
        SimplePathMemento* memento = nullptr;
        benchmark::DoNotOptimize(path.createMemento(&memento));
        delete memento;
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(state.iterations() * state.range(0) *
                            static_cast<std::int64_t>(sizeof(MementoTriple)));
}

void BM_UndoMemento(benchmark::State& state) {
    SimplePath path;
    buildPath(path, static_cast<int>(state.range(0)));
    SimplePathMemento* memento = nullptr;
    // Timed for speed only; the unit tests check what this call answers.
    (void)path.createMemento(&memento);
    std::unique_ptr<SimplePathMemento> const owned(memento);
    for (auto _ : state) {
        benchmark::DoNotOptimize(path.undo(memento));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(state.iterations() * state.range(0) *
                            static_cast<std::int64_t>(sizeof(MementoTriple)));
}

// The yardstick: copying one memento's worth of bytes (80 per vertex) with memcpy.
void BM_MemcpyMementoSize(benchmark::State& state) {
    std::size_t const bytes = static_cast<std::size_t>(state.range(0)) * sizeof(MementoTriple);
    std::vector<char> from(bytes, 1);
    std::vector<char> to(bytes, 0);
    for (auto _ : state) {
        std::memcpy(to.data(), from.data(), bytes);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}

BENCHMARK(BM_WriteStream)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadStream)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WriteStreamRewound)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_WriteMemory)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ReadMemory)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_CreateMemento)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_UndoMemento)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_MemcpyMementoSize)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace

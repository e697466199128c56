// Throughput of loading and saving .fordef documents against plain pugixml parsing and plain
// writing, memory of a loaded document, and lookups by ID across 100 open documents.
#include "fordef_generator.h"

#include "model/def_document_manager.h"
#include "model/fordef_reader.h"
#include "model/fordef_writer.h"

#include <benchmark/benchmark.h>
#include <boost/filesystem/operations.hpp>
#include <pugixml.hpp>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <malloc.h>
#include <new>
#include <random>
#include <unistd.h>

namespace fs = boost::filesystem;
using namespace QorBorder;

// Live heap bytes, for the memory figure of a loaded document.
static std::atomic<long> g_liveBytes{0};

void* operator new(std::size_t size) {
    void* p = std::malloc(size == 0 ? 1 : size);
    if (!p) {
        throw std::bad_alloc();
    }
    g_liveBytes += static_cast<long>(malloc_usable_size(p));
    return p;
}
void operator delete(void* p) noexcept {
    if (p) {
        g_liveBytes -= static_cast<long>(malloc_usable_size(p));
        std::free(p);
    }
}
void operator delete(void* p, std::size_t) noexcept {
    operator delete(p);
}

namespace {

struct Fixture {
    fs::path folder;
    fs::path file;
    std::string bytes;
    boost::shared_ptr<DefinitionDocument> document;

    Fixture() {
        folder = fs::temp_directory_path() / fs::unique_path("qorfmt-bench-%%%%-%%%%");
        fs::create_directories(folder);
        file = folder / "large.fordef";
        document = Bench::generateDocument(Bench::DocumentShape(), "");
        document->save(file);
        bytes = FordefWriter::toXml(*document);
    }
    ~Fixture() {
        boost::system::error_code ec;
        fs::remove_all(folder, ec);
    }
};

Fixture& fixture() {
    static Fixture f;
    return f;
}

std::string readAll(const fs::path& file) {
    std::string buffer(fs::file_size(file), '\0');
    std::FILE* in = std::fopen(file.c_str(), "rb");
    buffer.resize(std::fread(&buffer[0], 1, buffer.size(), in));
    std::fclose(in);
    return buffer;
}

void BM_PugixmlParseFile(benchmark::State& state) {
    const Fixture& f = fixture();
    for (auto _ : state) {
        std::string buffer = readAll(f.file);
        pugi::xml_document xml;
        benchmark::DoNotOptimize(xml.load_buffer_inplace(&buffer[0], buffer.size()));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<long>(f.bytes.size()));
}
BENCHMARK(BM_PugixmlParseFile)->Unit(benchmark::kMillisecond)->MinTime(3);

void BM_LoadDocument(benchmark::State& state) {
    const Fixture& f = fixture();
    for (auto _ : state) {
        benchmark::DoNotOptimize(FordefReader::read(f.file));
    }
    state.SetBytesProcessed(state.iterations() * static_cast<long>(f.bytes.size()));
}
BENCHMARK(BM_LoadDocument)->Unit(benchmark::kMillisecond)->MinTime(3);

void BM_WriteBytesWithFlush(benchmark::State& state) {
    const Fixture& f = fixture();
    const fs::path target = f.folder / "plain.fordef";
    for (auto _ : state) {
        const int fd = ::open(target.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        benchmark::DoNotOptimize(::write(fd, f.bytes.data(), f.bytes.size()));
        ::fsync(fd);
        ::close(fd);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<long>(f.bytes.size()));
}
BENCHMARK(BM_WriteBytesWithFlush)->Unit(benchmark::kMillisecond)->MinTime(3);

void BM_SaveDocument(benchmark::State& state) {
    Fixture& f = fixture();
    const fs::path target = f.folder / "saved.fordef";
    for (auto _ : state) {
        f.document->save(target);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<long>(f.bytes.size()));
}
BENCHMARK(BM_SaveDocument)->Unit(benchmark::kMillisecond)->MinTime(3);

void BM_LoadedDocumentMemory(benchmark::State& state) {
    const Fixture& f = fixture();
    double ratio = 0;
    for (auto _ : state) {
        const long before = g_liveBytes.load();
        auto document = FordefReader::read(f.file);
        ratio =
            static_cast<double>(g_liveBytes.load() - before) / static_cast<double>(f.bytes.size());
        benchmark::DoNotOptimize(document);
    }
    state.counters["file_MB"] = static_cast<double>(f.bytes.size()) / 1e6;
    state.counters["heap_per_file_byte"] = ratio;
}
BENCHMARK(BM_LoadedDocumentMemory)->Unit(benchmark::kMillisecond)->Iterations(3);

// 100 registered documents, each with 100 block layouts, 100 border layouts, 100 locations
// and 200 translations: 10,000 layouts of each kind in all.
struct Workspace {
    DefDocumentManagerImpl manager;
    fs::path folder;
    std::vector<std::string> blockIds;

    Workspace() {
        folder = fs::temp_directory_path() / fs::unique_path("qorfmt-bench-%%%%-%%%%");
        fs::create_directories(folder);
        Bench::DocumentShape shape;
        shape.blockLayouts = 100;
        shape.fieldsPerBlock = 2;
        shape.stylesPerBlock = 1;
        shape.rowTypesPerBlock = 1;
        shape.borderLayouts = 100;
        shape.sizesPerBorder = 1;
        shape.blockLocations = 100;
        shape.translations = 200;
        for (int d = 0; d < 100; ++d) {
            const std::string prefix = "D" + std::to_string(d) + "_";
            auto document = Bench::generateDocument(shape, prefix);
            document->save(folder / (prefix + ".fordef"));
            manager.addDocument(document);
            for (int k = 0; k < 100; ++k) {
                char id[32];
                std::snprintf(id, sizeof id, "%sBLOCK_%05d", prefix.c_str(), k);
                blockIds.push_back(id);
            }
        }
    }
    ~Workspace() {
        boost::system::error_code ec;
        fs::remove_all(folder, ec);
    }
};

Workspace& workspace() {
    static Workspace w;
    return w;
}

void BM_GetBlockLayoutHit(benchmark::State& state) {
    Workspace& w = workspace();
    std::mt19937 random(42);
    std::uniform_int_distribution<std::size_t> pick(0, w.blockIds.size() - 1);
    for (auto _ : state) {
        benchmark::DoNotOptimize(w.manager.getBlockLayout(w.blockIds[pick(random)]));
    }
}
BENCHMARK(BM_GetBlockLayoutHit)->Unit(benchmark::kMicrosecond);

void BM_GetBlockLayoutMiss(benchmark::State& state) {
    Workspace& w = workspace();
    for (auto _ : state) {
        benchmark::DoNotOptimize(w.manager.getBlockLayout("NEW BLOCK ID"));
    }
}
BENCHMARK(BM_GetBlockLayoutMiss)->Unit(benchmark::kMicrosecond);

void BM_GetBlockLayoutWhileADialogHoldsARenamedOne(benchmark::State& state) {
    Workspace& w = workspace();
    const auto held = w.manager.getBlockLayout("D50_BLOCK_00007");
    held->id = "D50_RENAMED";
    for (auto _ : state) {
        benchmark::DoNotOptimize(w.manager.getBlockLayout("D99_BLOCK_00099"));
        benchmark::DoNotOptimize(w.manager.getBlockLayout("D50_RENAMED"));
    }
    held->id = "D50_BLOCK_00007";
}
BENCHMARK(BM_GetBlockLayoutWhileADialogHoldsARenamedOne)->Unit(benchmark::kMicrosecond);

void BM_GetBorderLayoutMiss(benchmark::State& state) {
    Workspace& w = workspace();
    for (auto _ : state) {
        benchmark::DoNotOptimize(w.manager.getBorderLayout("NEW BORDER ID"));
    }
}
BENCHMARK(BM_GetBorderLayoutMiss)->Unit(benchmark::kMicrosecond);

void BM_GetBlockLocationMiss(benchmark::State& state) {
    Workspace& w = workspace();
    for (auto _ : state) {
        benchmark::DoNotOptimize(w.manager.getBlockLocation("D99_BLOCK_00001", "NEW LOC"));
    }
}
BENCHMARK(BM_GetBlockLocationMiss)->Unit(benchmark::kMicrosecond);

void BM_FieldTranslationMiss(benchmark::State& state) {
    Workspace& w = workspace();
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            w.manager.fieldTranslation("German", "D99_BLOCK_00001", "FIELD_00001", "NEW"));
    }
}
BENCHMARK(BM_FieldTranslationMiss)->Unit(benchmark::kMicrosecond);

void BM_FieldTranslationHitInLastDocument(benchmark::State& state) {
    Workspace& w = workspace();
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            w.manager.fieldTranslation("German", "D99_BLOCK_00000", "FIELD_00000", "K0"));
    }
}
BENCHMARK(BM_FieldTranslationHitInLastDocument)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();

// Peers of the property stream: the same entries through general-purpose binary writers: usage:
// bench_streams [times as many repeats [results]]
#include "bench/Measure.h"
#include "bench/StreamData.h"

#include "zorvane/propbag/ZVPropertyBag.h"

#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

#ifdef PEER_CEREAL
#include <cereal/archives/binary.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/variant.hpp>
#include <cereal/types/vector.hpp>
#endif
#ifdef PEER_BOOST_SERIALIZATION
#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>
#include <boost/serialization/vector.hpp>
#endif
#ifdef PEER_QT
#include <QBuffer>
#include <QDataStream>
#include <QVariant>
#endif

using namespace bench;

namespace {

double seconds(Clock::time_point t0) {
    return std::chrono::duration<double>(Clock::now() - t0).count();
}

// A growing memory stream, so that peers are not charged for stringstream's copying out.
struct MemoryOut : std::streambuf {
    std::vector<char> bytes;
    std::streamsize xsputn(const char* s, std::streamsize n) override {
        bytes.insert(bytes.end(), s, s + n);
        return n;
    }
    int_type overflow(int_type c) override {
        bytes.push_back(char(c));
        return c;
    }
};
struct MemoryIn : std::streambuf {
    explicit MemoryIn(std::vector<char>& b) { setg(b.data(), b.data(), b.data() + b.size()); }
};

using Bytes = std::vector<char>;

Results* results = nullptr;  // main's

void report(const char* what, const char* bag, size_t bytes, double write, double read) {
    std::printf("%-26s %-7s %9.3f MB   write %8.3f ms %7.2f GB/s   read %8.3f ms %7.2f GB/s\n",
                what, bag, double(bytes) / 1e6, write * 1e3, double(bytes) / write / 1e9,
                read * 1e3, double(bytes) / read / 1e9);
    std::fflush(stdout);
    results->Add("stream", what, bytes, bag, "write", write * 1e9);
    results->Add("stream", what, bytes, bag, "read", read * 1e9);
}

// What was measured of one contender, a few repeats in each of several rounds: noise hits all
// alike.
struct Samples {
    std::string what;
    size_t bytes = 0;
    std::vector<double> write, read;
};
std::vector<Samples> samples;

Samples& samplesOf(const char* what) {
    for (Samples& known : samples) {
        if (known.what == what) return known;
    }
    return samples.emplace_back(Samples{.what = what});
}

template <class W, class R>
void measure(const char* what, const StreamBag& bag, int reps, W writeBag, R readBag) {
    auto& [name, bytes, w, r] = samplesOf(what);
    clearWideRegisters();
    for (int i = 0; i < reps; ++i) {
        auto t0 = Clock::now();
        auto stream = writeBag(bag);
        w.push_back(seconds(t0));
        bytes = size_t(stream.size());
        t0 = Clock::now();
        auto back = readBag(stream);
        r.push_back(seconds(t0));
        if (i == 0 && size_t(back.size()) != bag.size()) fail(what, "entries lost");
        if constexpr (std::is_same_v<decltype(back), StreamBag>)
            if (i == 0 && !(back == bag)) fail(what, "values differ after a round trip");
    }
}

void memcpyLine(const char* bagName, size_t bytes, int reps) {
    std::vector<char> a(bytes, 1), b(bytes, 2);
    std::vector<double> warm, fresh;
    for (int i = 0; i < reps; ++i) {
        auto t0 = Clock::now();
        std::memcpy(b.data(), a.data(), bytes);
        keep(b[bytes / 2]);
        warm.push_back(seconds(t0));
        t0 = Clock::now();
        char* p = static_cast<char*>(std::malloc(bytes));
        std::memcpy(p, a.data(), bytes);
        keep(p[bytes / 2]);
        fresh.push_back(seconds(t0));
        std::free(p);
    }
    report("memcpy, warm target", bagName, bytes, typical(warm), typical(warm));
    report("memcpy, fresh malloc", bagName, bytes, typical(fresh), typical(fresh));
}

// The bag of this project, filled outside the timing.
struct OurStream {
    zorvane::Array words;
    size_t size() const { return 2 * size_t(words.Count()); }
};
struct OurBag {
    zorvane::ZVPropertyBag bag;
    size_t size() const { return size_t(bag.Count()); }
};
zorvane::Variant ourValue(const StreamValue& value) {
    return std::visit(
        [](const auto& x) -> zorvane::Variant {
            using T = std::decay_t<decltype(x)>;
            if constexpr (std::is_same_v<T, std::monostate>) {
                return {};
            } else if constexpr (std::is_same_v<T, std::vector<int16_t>>) {
                return zorvane::Array::OfWords(x);
            } else if constexpr (std::is_same_v<T, std::vector<uint8_t>>) {
                zorvane::Array bytes(zorvane::VarType::Byte, 0, int32_t(x.size()));
                std::ranges::copy(std::as_bytes(std::span(x)), bytes.MutableBytes().begin());
                return bytes;
            } else {
                return x;
            }
        },
        value);
}
void ours(const StreamBag& bag, int reps) {
    zorvane::ZVPropertyBag filled;
    for (auto& e : bag) filled.WriteProperty(e.name, ourValue(e.value));
    measure(
        "ZVPropertyBag", bag, reps, [&](const StreamBag&) { return OurStream{filled.Contents()}; },
        [](const OurStream& in) {
            OurBag back;
            back.bag.SetContents(in.words);
            return back;
        });
}

#ifdef PEER_QT
// The bag as Qt users would hold it, built outside the timing.
struct QtEntry {
    QString name, className;
    QVariant value;
};
QList<QtEntry> qtBag(const StreamBag& bag) {
    QList<QtEntry> out;
    auto str = [](const std::u16string& s) {
        return QString::fromUtf16(s.data(), qsizetype(s.size()));
    };
    for (auto& e : bag) {
        QVariant v = std::visit(
            [&](const auto& x) -> QVariant {
                using T = std::decay_t<decltype(x)>;
                if constexpr (std::is_same_v<T, std::monostate>)
                    return {};
                else if constexpr (std::is_same_v<T, std::u16string>)
                    return str(x);
                else if constexpr (std::is_same_v<T, std::vector<int16_t>>)
                    return QByteArray(reinterpret_cast<const char*>(x.data()),
                                      qsizetype(2 * x.size()));
                else if constexpr (std::is_same_v<T, std::vector<uint8_t>>)
                    return QByteArray(reinterpret_cast<const char*>(x.data()), qsizetype(x.size()));
                else if constexpr (std::is_same_v<T, int16_t>)
                    return int(x);
                else
                    return x;
            },
            e.value);
        out.append({str(e.name), str(e.className), v});
    }
    return out;
}
void qt(const StreamBag& bag, int reps) {
    QList<QtEntry> q = qtBag(bag);
    measure(
        "QDataStream (QVariant)", bag, reps,
        [&](const StreamBag&) {
            QByteArray out;
            QDataStream ds(&out, QIODevice::WriteOnly);
            ds.setByteOrder(QDataStream::LittleEndian);
            ds << quint32(q.size());
            for (auto& e : std::as_const(q)) ds << e.name << e.className << e.value;
            return out;
        },
        [](const QByteArray& in) {
            QDataStream ds(in);
            ds.setByteOrder(QDataStream::LittleEndian);
            quint32 n;
            ds >> n;
            QList<QtEntry> back;
            back.resize(qsizetype(n));
            for (auto& e : back) ds >> e.name >> e.className >> e.value;
            return back;
        });
}
#endif

}  // namespace

#ifdef PEER_CEREAL
namespace bench {
template <class A>
void serialize(A& a, StreamEntry& e) {
    a(e.name, e.className, e.value);
}
}  // namespace bench
#endif

#ifdef PEER_BOOST_SERIALIZATION
namespace {
template <class A>
void saveText(A& a, const std::u16string& s) {
    uint32_t n = uint32_t(s.size());
    a& n;
    a.save_binary(s.data(), 2 * s.size());
}
template <class A>
void loadText(A& a, std::u16string& s) {
    uint32_t n;
    a& n;
    s.resize(n);
    a.load_binary(s.data(), 2 * s.size());
}
Bytes boostWrite(const StreamBag& bag) {
    MemoryOut out;
    {
        boost::archive::binary_oarchive a(out,
                                          boost::archive::no_header | boost::archive::no_codecvt);
        uint32_t n = uint32_t(bag.size());
        a& n;
        for (auto& e : bag) {
            saveText(a, e.name);
            saveText(a, e.className);
            uint8_t t = uint8_t(e.value.index());
            a& t;
            std::visit(
                [&](const auto& x) {
                    using T = std::decay_t<decltype(x)>;
                    if constexpr (std::is_same_v<T, std::u16string>)
                        saveText(a, x);
                    else if constexpr (!std::is_same_v<T, std::monostate>)
                        a& x;
                },
                e.value);
        }
    }
    return std::move(out.bytes);
}
template <size_t I = 0, class A>
void loadValue(A& a, StreamValue& v, size_t t) {
    if constexpr (I < std::variant_size_v<StreamValue>) {
        if (t != I) return loadValue<I + 1>(a, v, t);
        auto& x = v.emplace<I>();
        if constexpr (std::is_same_v<std::decay_t<decltype(x)>, std::u16string>)
            loadText(a, x);
        else if constexpr (!std::is_same_v<std::decay_t<decltype(x)>, std::monostate>)
            a& x;
    }
}
StreamBag boostRead(Bytes& bytes) {
    MemoryIn in(bytes);
    boost::archive::binary_iarchive a(in, boost::archive::no_header | boost::archive::no_codecvt);
    uint32_t n;
    a& n;
    StreamBag bag(n);
    for (auto& e : bag) {
        loadText(a, e.name);
        loadText(a, e.className);
        uint8_t t;
        a& t;
        loadValue(a, e.value, t);
    }
    return bag;
}
}  // namespace
#endif

// One round.
static void measureAll(const StreamBag& bag, int reps) {
    ours(bag, reps);
#ifdef PEER_QT
    qt(bag, reps);
#endif
#ifdef PEER_CEREAL
    measure(
        "cereal binary", bag, reps,
        [](const StreamBag& bag) {
            MemoryOut out;
            std::ostream os(&out);
            {
                cereal::BinaryOutputArchive a(os);
                a(const_cast<StreamBag&>(bag));
            }
            return std::move(out.bytes);
        },
        [](Bytes& bytes) {
            MemoryIn in(bytes);
            std::istream is(&in);
            cereal::BinaryInputArchive a(is);
            StreamBag bag;
            a(bag);
            return bag;
        });
#endif
#ifdef PEER_BOOST_SERIALIZATION
    measure("boost binary archive", bag, reps, boostWrite, boostRead);
#endif
}

int main(int argc, char** argv) {
    const int scale = argc > 1 ? std::atoi(argv[1]) : 1;  // more repeats
    Results file(argc > 2 ? argv[2] : "");
    results = &file;
    StreamBag mixed = mixedBag(), big = arrayBag();
    struct {
        const char* name;
        const StreamBag& bag;
        int reps;
    } sets[] = {{"mixed", mixed, 21 * scale}, {"array", big, 3 * scale}};
    for (auto& s : sets) {
        memcpyLine(s.name, 2 * streamWords(s.bag), 5 * s.reps);
        samples.clear();
        for (int round = 0; round < 5; ++round) measureAll(s.bag, s.reps);
        for (const Samples& each : samples) {
            report(each.what.c_str(), s.name, each.bytes, typical(each.write), typical(each.read));
        }
    }
}

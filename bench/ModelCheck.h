#pragma once
// A contender against a plain vector: what is timed has to be right.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "bench/Data.h"
#include "bench/Measure.h"

namespace bench {

// Random adds and removals against a plain vector, positions compared throughout.
template <class C>
void checkAgainstModel(const std::string& name) {
    for (uint64_t seed = 1; seed <= 6; ++seed) {
        bool random = seed % 2;
        Data d = makeData(400, random, seed);
        std::mt19937 rng{unsigned(seed)};
        C c(d);
        std::vector<uint32_t> model, out(d.keys.size());
        std::iota(out.begin(), out.end(), 0u);
        const auto& keys = [&]() -> const auto& {
            if constexpr (requires { c.keys; })
                return c.keys;
            else
                return keysOf<typename C::Text>(d);
        }
        ();
        auto byModel = [&](uint32_t a, uint32_t b) { return keys[a] < keys[b]; };
        auto addOne = [&](bool mid) {
            size_t k = rng() % out.size();
            uint32_t i = out[k];
            out.erase(out.begin() + long(k));
            if constexpr (C::sorted) {
                c.add(i);
                model.insert(std::lower_bound(model.begin(), model.end(), i, byModel), i);
            } else {
                if constexpr (requires { c.insertMid(size_t(0)); })
                    if (mid) {
                        c.insertMid(i);
                        model.insert(model.begin() + long(model.size() / 2), i);
                        return;
                    }
                c.add(i);
                model.push_back(i);
            }
        };
        for (int step = 0; step < 3000; ++step) {
            unsigned r = rng() % 100;
            bool growing = step < 800;
            if (!out.empty() && r < (growing ? 70u : 48u))
                addOne(r % 3 == 0);
            else if (!model.empty() && r < 80) {
                size_t p = rng() % model.size();
                if (r % 4 == 0) p = 0;
                uint32_t i = model[p];
                if (p == 0 && r % 8 == 0)
                    c.removeFirst();
                else
                    c.removeKey(i);
                model.erase(model.begin() + long(p));
                out.push_back(i);
            }
            if (c.size() != model.size()) fail(name, "check: size");
            if (c.absent()) fail(name, "check: absent key found");
            if (step % 37 && step < 2900) continue;
            int64_t total = 0;
            for (size_t p = 0; p < model.size(); ++p) {
                total += d.values[model[p]];
                if (c.byKey(model[p]) != d.values[model[p]]) fail(name, "check: by key");
                if constexpr (C::positional)
                    if (c.byPos(p) != d.values[model[p]]) fail(name, "check: by position");
            }
            if (c.sum() != total) fail(name, "check: sum");
        }
    }
}

}  // namespace bench

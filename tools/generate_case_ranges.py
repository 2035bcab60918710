#!/usr/bin/env python3
"""Writes zorvane/platform/detail/CaseRanges.inc from Unicode data (Debian: package unicode-data).

usage: generate_case_ranges.py /usr/share/unicode > zorvane/platform/detail/CaseRanges.inc

Takes the simple case foldings (status C and S) and the simple lower-case mappings and packs them
into runs of equal distance. Fails where an assumption of the reading code would not hold.
"""
import sys


def read_folding(folder):
    for line in open(f"{folder}/CaseFolding.txt", encoding="utf-8"):
        fields = [f.strip() for f in line.split("#")[0].split(";")]
        if len(fields) >= 3 and fields[1] in "CS":
            yield int(fields[0], 16), int(fields[2], 16)


def read_lower(folder):
    for line in open(f"{folder}/UnicodeData.txt", encoding="utf-8"):
        fields = line.split(";")
        if fields[13]:
            yield int(fields[0], 16), int(fields[13], 16)


def runs(mapping):
    """Packs {point: target} into (first, last, step, distance), points step apart."""
    packed = []
    for point in sorted(mapping):
        distance = mapping[point] - point
        if packed:
            first, last, step, d = packed[-1]
            gap = point - last
            if d == distance and (gap == step or (first == last and gap in (1, 2))):
                packed[-1] = (first, point, gap, d)
                continue
        packed.append((point, point, 1, distance))
    return packed


def check(fold, lower):
    for mapping in (fold, lower):
        for point, target in mapping.items():
            assert (point > 0xFFFF) == (target > 0xFFFF), "a mapping changes the number of units"
            assert not 0xD800 <= target <= 0xDFFF
    # The hash maps a point to the folding of its lower case: it must not part what folding joins.
    key = lambda p: fold.get(lower.get(p, p), lower.get(p, p))
    for point in list(fold) + list(lower):
        target = fold.get(point, point)
        assert key(point) == key(target), f"U+{point:04X}: the hash parts equal letters"
        assert key(point) == key(lower.get(point, point)), f"U+{point:04X}: lower case parted"


def main():
    folder = sys.argv[1]
    fold, lower = dict(read_folding(folder)), dict(read_lower(folder))
    check(fold, lower)
    print("// Made by tools/generate_case_ranges.py; do not edit. {first, last, step, distance}")
    for name, mapping in (("kFoldRuns", fold), ("kLowerRuns", lower)):
        print(f"inline constexpr CaseRun {name}[] = {{")
        for first, last, step, distance in runs(mapping):
            print(f"    {{0x{first:04X}, 0x{last:04X}, {step}, {distance}}},")
        print("};")


main()

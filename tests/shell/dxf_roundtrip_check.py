"""Checks a drawing saved by kelvo-host against the file it was read from, with ezdxf.

Usage: dxf_roundtrip_check.py INPUT SAVED [--leaders N]

Prints one line per fault and exits 1 when there is any:
- the saved file must load, and its audit must find no kind of fault more often than in
  the input;
- every entity of the input (model space, paper space and blocks) must be in the saved
  file with the same type and handle (files without handles: the same count per type);
- with --leaders N: N custom leaders whose proxy graphics draw lines and a tag.
"""

import collections
import sys

import ezdxf
from ezdxf import proxygraphic


def audit_counts(doc):
    auditor = doc.audit()
    counts = collections.Counter()
    for entry in list(auditor.errors) + list(auditor.fixes):
        counts[entry.code] += 1
    return counts, auditor


def entities(path):
    """(type, handle) of every entity of the file's ENTITIES and BLOCKS sections, read
    from its groups (what a reader might add on loading is not counted)."""
    with open(path, "rb") as f:
        lines = [line.rstrip("\r") for line in f.read().decode("latin-1").split("\n")]
    out, section, current = [], None, None
    pairs = [(lines[i].strip(), lines[i + 1]) for i in range(0, len(lines) - 1, 2)]
    for code, value in pairs:
        if code == "0":
            if current:
                out.append(tuple(current))
            current = None
            if value == "EOF":
                break
            if section in ("ENTITIES", "BLOCKS") and value not in ("BLOCK", "ENDBLK", "SECTION", "ENDSEC"):
                current = [value, None]
        elif code == "2" and section is None:
            section = value.strip()
        elif code in ("5", "105") and current and current[1] is None:
            current[1] = value.strip().upper()
        if code == "0" and value == "ENDSEC":
            section = None
    return out


def leader_graphics(doc):
    """Per custom leader: the types its proxy graphics draw."""
    out = []
    for e in doc.modelspace():
        if e.dxftype() != "TVLEADER":
            continue
        data = getattr(e, "proxy_graphic", None)
        if not data:
            out.append([])
            continue
        pg = proxygraphic.ProxyGraphic(data, doc)
        out.append([v.dxftype() for v in pg.virtual_entities()])
    return out


def main():
    src, saved = sys.argv[1], sys.argv[2]
    leaders = None
    if len(sys.argv) > 4 and sys.argv[3] == "--leaders":
        leaders = int(sys.argv[4])
    faults = []
    # The saved file first; the input is loaded only to compare faults with.
    before_counts, before_error = None, None

    def input_faults():
        nonlocal before_counts, before_error
        if before_counts is None:
            try:
                before_counts, _ = audit_counts(ezdxf.readfile(src))
            except Exception as exc:  # the input itself does not load
                before_counts, before_error = collections.Counter(), str(exc)
        return before_counts

    try:
        after = ezdxf.readfile(saved)
    except Exception as exc:
        input_faults()
        if str(exc) != before_error:  # (the same fault as the input's is no new one)
            faults.append(f"does not load: {exc}")
        after = None
    after_counts, auditor = audit_counts(after) if after else (collections.Counter(), None)
    for code, n in after_counts.items():
        if n > input_faults().get(code, 0):
            messages = [e.message for e in list(auditor.errors) + list(auditor.fixes) if e.code == code]
            faults.append(f"audit code {code}: {n} (input {before_counts.get(code, 0)}): {messages[:3]}")
    # Entities from the files' groups, so also where ezdxf cannot read the input.
    old, new = entities(src), entities(saved)
    if all(h for _, h in old):
        missing = collections.Counter(old) - collections.Counter(new)
        if missing:
            faults.append(f"entities lost or changed: {sorted(missing.items())[:8]}")
    else:
        lost = collections.Counter(t for t, _ in old) - collections.Counter(t for t, _ in new)
        if lost:
            faults.append(f"entities lost: {dict(lost)}")
    if leaders is not None and after:
        drawn = leader_graphics(after)
        if len(drawn) != leaders:
            faults.append(f"{len(drawn)} leaders, expected {leaders}")
        for i, types in enumerate(drawn):
            if "LINE" not in types and "POLYLINE" not in types and "LWPOLYLINE" not in types:
                faults.append(f"leader {i} draws no lines: {types}")
            if len(types) < 3:
                faults.append(f"leader {i} draws no tag: {types}")
    for f in faults:
        print(f"FAIL {saved}: {f}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())

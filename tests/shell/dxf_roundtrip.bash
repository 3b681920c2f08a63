# A drawing read by kelvo-host and saved as DXF opens in ezdxf (its audit finds nothing the
# input did not have, every entity is kept by type and handle), renders in LibreCAD to a PDF
# with ink, and a second round trip gives the same bytes. Skipped (status 77) when ezdxf,
# LibreCAD or pdftoppm is missing. One test per test drawing (tests/CMakeLists.txt), and
# one for the tour drawing, whose tag leaders must show through their proxy graphics.
# Usage: dxf_roundtrip.bash HOST TESTS (DRAWING | --tour)
host=$1 tests=$2 what=$3
source "$tests/shell/assert.bash"

python=/usr/bin/python3
if ! $python -c 'import ezdxf' 2>/dev/null || ! command -v librecad >/dev/null ||
   ! command -v pdftoppm >/dev/null; then
  echo "skipped: python3-ezdxf, librecad and poppler-utils are needed (scripts/setup.sh)"
  exit 77
fi
check="$tests/shell/dxf_roundtrip_check.py"

# Dark pixels of a PDF's first page, scaled to 400 pixels.
ink() {
  timeout 20 pdftoppm -scale-to 400 -gray -singlefile "$1" page >/dev/null 2>&1 || { echo 0; return; }
  $python -c '
import sys
data = open("page.pgm", "rb").read()
magic, size, depth, pixels = data.split(b"\n", 3)
print(sum(1 for b in pixels if b < 160))'
}

# round_trip INPUT NAME [checker options]: the whole check of one drawing.
round_trip() {
  local input=$1 name=$2
  shift 2
  "$host" --no-module --drawing "$input" -e '(princ)' --save "$name.dxf" >/dev/null 2>"$name.err"
  expect_eq "$name: read and saved" "0 " "$? $(cat "$name.err")"
  "$host" --no-module --drawing "$name.dxf" -e '(princ)' --save "$name.again.dxf" >/dev/null 2>&1
  expect_eq "$name: a second round trip gives the same bytes" "same" \
    "$(cmp -s "$name.dxf" "$name.again.dxf" && echo same || cmp "$name.dxf" "$name.again.dxf" 2>&1)"
  expect_eq "$name: ezdxf reads, audits and finds every entity" "" \
    "$($python "$check" "$input" "$name.dxf" "$@" 2>&1 | head -c 600)"
  # (LibreCAD turns some texts into outlines of hundreds of megabytes: past 20 s the
  # picture is left out, and said so.)
  if ! QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR="$scratch" timeout 20 librecad dxf2pdf -a "$name.dxf" \
    >/dev/null 2>&1; then
    echo "note: LibreCAD did not finish $name within 20 s: not pictured"
    return
  fi
  local dark before
  dark=$(ink "$name.pdf")
  [ "${dark:-0}" -gt 20 ] && return
  # No ink: a fault unless LibreCAD draws nothing of the input either (drawn from a copy,
  # since LibreCAD writes each PDF beside its drawing).
  cp "$input" "$name.input.dxf"
  QT_QPA_PLATFORM=offscreen XDG_RUNTIME_DIR="$scratch" timeout 20 librecad dxf2pdf -a "$name.input.dxf" \
    >/dev/null 2>&1
  before=$(ink "$name.input.pdf")
  if [ "${before:-0}" -gt 20 ]; then
    expect_eq "$name: LibreCAD draws it" "ink" "no ink ($dark dark pixels, the input $before)"
  else
    echo "note: LibreCAD draws nothing of $name's input either ($before dark pixels)"
  fi
}

# The tour's drawing (its three tag leaders, made with the module) round-trips too: its
# leaders carry proxy graphics that ezdxf draws as lines and a tag, and kept as proxies
# by a host without the module they keep them.
round_trip_tour() {
  printf '(defun tour:step (s) (princ))\n(defun tour:show (what value) (princ))\n' >stubs.lsp
  TMPDIR=$scratch "$host" --prefix "$tests/../examples" stubs.lsp "$tests/../examples/tour_drawing.lsp" \
    >tour.out 2>tour.err
  local drawing=$scratch/kelvo-tour-drawing/tour-drawing.dxf
  expect_eq "the tour drawing is saved" "yes" "$([ -s "$drawing" ] && echo yes || cat tour.err)"
  expect_eq "the tour drawing says its proxy graphics are there" "1" \
    "$(tr -d '\r' <"$drawing" | grep -A2 -x '\$PROXYGRAPHICS' | tail -n 1 | tr -d ' ')"
  expect_eq "ezdxf draws the tour's leaders" "" \
    "$($python "$check" "$drawing" "$drawing" --leaders 3 2>&1 | head -c 600)"
  round_trip "$drawing" tour-drawing --leaders 3
}

if [ "$what" = --tour ]; then
  round_trip_tour
else
  name=$(basename "$what")
  round_trip "$what" "${name%.*}"
fi
finish

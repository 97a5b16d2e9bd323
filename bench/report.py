#!/usr/bin/env python3
"""Turns the benchmark program's JSON into the report: a Markdown table per pair of ours against
each anchor with the ratio and the goal, and an SVG chart of the LU scaling.

    python3 bench/report.py RESULTS.json REPORT.md LU_CHART.svg

Only the standard library: the machines that run this have nothing else.
"""
import json
import math
import sys
from collections import OrderedDict

OURS = "znmt64"

# Sections in the order of the issue, with the goal each row is held to. A goal names the anchor,
# the largest allowed ratio of our time to the anchor's, and for some rows a further test.
SECTIONS = [
    ("vec", "1. Three-component vectors (SMat)", "time per operation"),
    ("frame", "2. Frames (CMFrame)", "time per operation"),
    ("mat3", "3a. 3×3 matrices (Mat)", "time per operation"),
    ("mat4", "3b. 4×4 matrices (Mat)", "time per operation"),
    ("lu", "4. LU decomposition + one solution", "time per solve"),
    ("geo", "5. Geometric queries", "time per query"),
    ("brent", "6. Brent's method", "time per solve"),
]

ANCHOR_NAMES = {
    OURS: "znmt64",
    "eigen": "Eigen",
    "eigen_dyn": "Eigen MatrixXd",
    "eigen_fixed": "Eigen fixed",
    "occt": "Open CASCADE",
    "openblas": "OpenBLAS",
    "crout_reference": "textbook Crout",
    "gsl": "GSL Brent",
    "boost_toms748": "Boost TOMS 748",
    "cgal": "CGAL",
}


# Rows and libraries in a fixed order, whatever order the interleaved run reported them in.
OP_ORDER = {
    "vec": ["dot", "cross", "normalize", "angle", "is_collinear", "is_collinear_near"],
    "frame": ["to_global", "to_local", "compose"],
    "mat3": ["product", "product_into", "det", "inverse", "solve"],
    "mat4": ["product", "product_into", "det", "inverse", "solve"],
    "geo": ["segment_distance", "line_square_distance", "plane_point_location", "triangle_point_location",
            "circle_plane_intersection"],
}
LIB_ORDER = ["eigen", "eigen_dyn", "eigen_fixed", "openblas", "crout_reference", "cgal", "occt", "gsl",
             "boost_toms748"]


# Why a goal stays missed, printed under the list of misses. Each names what our operation must
# compute that the anchor's does not; none of it can go without changing results.
NOTES = {
    ("vec", "is_collinear_near"):
        "For nearly parallel vectors (cross product below 1e-4) IsCollinear compares the components "
        "of one with the other scaled by their ratio: a division and three tests that the anchors' "
        "cross-product or angle tests do not make, and on which its answers depend.",
    ("vec", "is_collinear"):
        "For independent vectors IsCollinear is Eigen's test (the cross product's norm against the "
        "tolerance) behind two more: a negative tolerance, and whether the norm reaches 1e-4, the "
        "threshold of its component test.",
    ("frame", "to_global"):
        "The arithmetic is Eigen's operation for operation (the same bits); what remains is the "
        "in-place form of the call: the caller's point is copied, then transformed where it lies, a "
        "round trip through memory that Eigen's q = T·p does not make (given its point the same way, "
        "Eigen takes as long as ours).",
    ("frame", "to_local"): None,
    ("mat", "product"):
        "A new Mat allocates its block, as the operator's signature demands: malloc and free alone "
        "take longer than twice Eigen's whole fixed-size product. The product itself is the "
        "product_into row.",
    ("mat", "product_into"):
        "The sums are the general loop's, unrolled; what remains is the call into the shared library "
        "and the checks a matrix of run-time shape needs (its shape, the elements its block holds), "
        "which Eigen's fixed size settles at compile time and inlines.",
    ("mat", "det"):
        "Up to 3×3 the closed form is Eigen's and the difference is the call into the shared "
        "library; a 4×4 determinant is defined as the product of the LU diagonal (exchanges and "
        "1e-20 pivots included), whose reciprocals form a dependent chain that the fixed-size "
        "cofactor expansion does not have.",
    ("mat", "inverse"):
        "GetInverse solves n systems through the LU factors: a reciprocal per row scale and per "
        "pivot and n² divisions in the back substitutions (14 divisions for a 3×3), where Eigen's "
        "fixed-size inverse expands cofactors with a single division; another method would give "
        "other bits.",
    ("mat", "solve"):
        "Solve is the LU decomposition and one substitution, as for the inverse; the divisions of the "
        "decomposition and the back substitution are a dependent chain.",
    ("geo", "segment_distance"):
        "DistSegm goes through the lines' common normal (normalised: a square root and three "
        "divisions), a plane intersection and projections, then clamps on the other segment and takes "
        "square roots; CGAL solves a 2×2 system on unnormalised vectors. Each step fixes bits of the "
        "documented (one-sided) result.",
    ("geo", "line_square_distance"):
        "SquareDist builds the nearest points and their parameters on the way (a normalised common "
        "normal, a plane intersection, a projection: one square root and five divisions); the anchors "
        "compute the distance alone from a triple product and one division.",
    ("geo", "plane_point_location"):
        "Ours forms (p − origin)·n and within 15·tol of the plane measures again through the virtual "
        "distance (a projection); CGAL's plane keeps its equation and evaluates a sign.",
    ("geo", "triangle_point_location"):
        "Every call builds the triangle's normal and frame (square roots and divisions), lays the "
        "triangle and the point flat and classifies in 2D with tolerances and side and corner "
        "positions; the library caches nothing between calls. CGAL's row is one squared distance.",
    ("geo", "circle_plane_intersection"):
        "The same construction as the CGAL row (common line, foot of the centre, one square root), "
        "but the common line's direction is normalised (a square root and three divisions) and its "
        "point found through a reciprocal.",
}


NOTES[("frame", "to_local")] = NOTES[("frame", "to_global")]


def note_for(group, op):
    return NOTES.get((group, op)) or NOTES.get(("mat" if group.startswith("mat") else group, op))


def row_key(key):
    group, op, arg = key
    order = OP_ORDER.get(group, [])
    return (order.index(op) if op in order else len(order), op, int(arg) if arg.isdigit() else 0, arg)


def goals_for(group, op):
    """(anchor, max ratio of our time) pairs; an empty list means measured, no goal."""
    if group == "vec":
        return [("eigen", 1.0)]
    if group == "frame":
        return [("eigen", 1.0)] if op in ("to_global", "to_local") else []
    if group in ("mat3", "mat4"):
        return [("eigen_dyn", 1.0), ("eigen_fixed", 2.0)]
    if group == "geo":
        return [("cgal", 1.0), ("occt", 1.0)]
    if group == "brent":
        return [("gsl", 1.0)]
    return []


# A goal missed by less than the measurements' spread.
NOISE = "within noise"


def verdict_text(met):
    if any(m is False for m in met):
        return "**no**"
    return NOISE if any(m is NOISE for m in met) else "yes"


def fmt_time(sec):
    if sec is None:
        return "–"
    for unit, scale in (("s", 1.0), ("ms", 1e-3), ("µs", 1e-6), ("ns", 1e-9)):
        if sec >= scale or unit == "ns":
            v = sec / scale
            return f"{v:.3g} {unit}" if v < 100 else f"{v:.0f} {unit}"
    return str(sec)


def fmt_ratio(r):
    return "–" if r is None else f"{r:.2f}×"


def load(path):
    with open(path) as f:
        data = json.load(f)
    rows = OrderedDict()
    spread = {}
    for b in data["benchmarks"]:
        name = b.get("run_name", b["name"])
        parts = name.split("/")
        if len(parts) < 3:
            continue
        group, op, lib = parts[0], parts[1], parts[2]
        arg = "/".join(parts[3:])
        # Repetitions report their median, and their coefficient of variation for the noise
        # allowance below; a single run reports itself.
        if b.get("run_type") == "aggregate":
            if b.get("aggregate_name") == "cv":
                cv = b.get("sec_per_op", b.get("cpu_time"))
                spread[name] = cv if cv == cv else 0.0
            if b.get("aggregate_name") != "median":
                continue
        rows.setdefault((group, op, arg), OrderedDict())[lib] = b
    for libs in rows.values():
        for b in libs.values():
            b["_cv"] = spread.get(b.get("run_name", b["name"]), 0.0)
    return data.get("context", {}), rows


def per_op(b):
    if b is None or b.get("error_occurred"):
        return None
    if "sec_per_op" in b:
        return b["sec_per_op"]
    return b["cpu_time"] * {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}[b.get("time_unit", "ns")]


def gflops(b):
    return None if b is None or b.get("error_occurred") or "flops" not in b else b["flops"] / 1e9


def write_report(context, rows, out_md, chart_name):
    lines = []
    lines.append("# znmt64 benchmarks")
    lines.append("")
    lines.append(
        f"Machine: {context.get('num_cpus', '?')} CPUs at {context.get('mhz_per_cpu', '?')} MHz, "
        f"AVX-512F: {context.get('cpu_avx512f', '?')}, AVX2: {context.get('cpu_avx2', '?')}; "
        f"load average at start {', '.join(f'{x:.1f}' for x in context.get('load_avg', []))}; "
        f"{context.get('date', '')}."
    )
    lines.append("")
    lines.append(
        "Times are CPU time per operation, the median of the repetitions of one run (repetitions "
        "interleaved at random, so that a change of load hits every row alike); the ratio is "
        "ours / anchor, so below 1 means we are faster. `allocs` is heap blocks per operation. "
        "A goal reads `≤ r× anchor`; *within noise* means the ratio exceeds the limit by less than "
        "the coefficients of variation of the two rows together."
    )
    lines.append("")
    verdicts = []
    for group, title, what in SECTIONS:
        keys = sorted((k for k in rows if k[0] == group), key=row_key)
        if not keys:
            continue
        anchors = sorted({lib for k in keys for lib in rows[k] if lib != OURS},
                         key=lambda lib: (LIB_ORDER.index(lib) if lib in LIB_ORDER else len(LIB_ORDER), lib))
        lines.append(f"## {title}")
        lines.append("")
        header = ["operation", f"znmt64 ({what})"]
        for a in anchors:
            header += [ANCHOR_NAMES.get(a, a), "ours / " + ANCHOR_NAMES.get(a, a)]
        extra = []
        if group in ("mat3", "mat4"):
            extra = ["allocs (ours / " + " / ".join(ANCHOR_NAMES.get(a, a) for a in anchors) + ")"]
        if group == "lu":
            extra = ["GFLOP/s (ours / " + " / ".join(ANCHOR_NAMES.get(a, a) for a in anchors) + ")", "bit-identical"]
        if group == "brent":
            extra = ["evaluations (ours / " + " / ".join(ANCHOR_NAMES.get(a, a) for a in anchors) + ")"]
        header += extra + ["goal", "met"]
        lines.append("| " + " | ".join(header) + " |")
        lines.append("|" + "---|" * len(header))
        for k in keys:
            libs = rows[k]
            ours = libs.get(OURS)
            t_ours = per_op(ours)
            label = k[1] if not k[2] else f"{k[1]} n={k[2]}" if group == "lu" else f"{k[1]} {k[2]}"
            if group == "brent" and ours is not None and ours.get("label"):
                label = ours["label"]
            cells = [label, fmt_time(t_ours)]
            ratios = {}
            for a in anchors:
                t = per_op(libs.get(a))
                r = t_ours / t if t_ours and t else None
                ratios[a] = r
                cells += [fmt_time(t), fmt_ratio(r)]
            if group in ("mat3", "mat4"):
                cells.append(" / ".join(f"{libs[l]['allocs']:.0f}" if l in libs and "allocs" in libs[l] else "–"
                                        for l in [OURS] + anchors))
            goal_txt, met = [], []
            if group == "lu":
                g = [gflops(libs.get(l)) for l in [OURS] + anchors]
                cells.append(" / ".join("–" if x is None else f"{x:.2f}" for x in g))
                cells.append("yes" if ours is not None and ours.get("bit_identical") == 1 else "NO")
                if k[2] == "1024":
                    gb = gflops(libs.get("openblas"))
                    goal_txt.append("≥ ¼ OpenBLAS GFLOP/s, bit-identical")
                    ok = g[0] is not None and gb is not None and g[0] >= 0.25 * gb and ours.get("bit_identical") == 1
                    met.append(ok)
            if group == "brent":
                ev = [libs[l].get("evals") if l in libs else None for l in [OURS] + anchors]
                cells.append(" / ".join("–" if x is None else f"{x:.0f}" for x in ev))
                if ev[0] is not None and "gsl" in libs:
                    goal_txt.append("evals within 1 of GSL")
                    met.append(abs(ev[0] - libs["gsl"]["evals"]) <= 1)
            for a, limit in goals_for(group, k[1]):
                if a not in libs:
                    continue
                goal_txt.append(f"≤ {limit:g}× {ANCHOR_NAMES.get(a, a)}")
                r = ratios.get(a)
                if r is None:
                    met.append(False)
                elif r <= limit:
                    met.append(True)
                else:
                    # Over the limit by less than the two rows' combined spread: not decided.
                    noise = ours.get("_cv", 0.0) + libs[a].get("_cv", 0.0)
                    met.append(NOISE if r <= limit * (1.0 + noise) else False)
            if group in ("mat3", "mat4") and ours is not None:
                own = 1 if k[1] == "product" else 0
                goal_txt.append(f"{own} alloc")
                met.append(ours.get("allocs", 0) <= own)
            cells.append("; ".join(goal_txt) if goal_txt else "–")
            cells.append("–" if not met else verdict_text(met))
            if met:
                verdicts.append((group, label, all(m is True or m is NOISE for m in met), goal_txt, met))
            lines.append("| " + " | ".join(cells) + " |")
        lines.append("")
        if group == "lu":
            lines.append(f"![LU scaling]({chart_name})")
            lines.append("")
    missed = [v for v in verdicts if not v[2]]
    lines.append("## Goals")
    lines.append("")
    noisy = [v for v in verdicts if v[2] and any(m is NOISE for m in v[4])]
    lines.append(
        f"{len(verdicts) - len(missed)} of {len(verdicts)} rows meet every goal they are held to"
        + (f", {len(noisy)} of them within the spread of the repetitions (the ratio exceeds the limit "
           "by less than the two rows' coefficients of variation together)" if noisy else "")
        + "."
    )
    if missed:
        lines.append("")
        lines.append("Missed, and what remains:")
        lines.append("")
        for group, label, _, goal_txt, met in missed:
            which = [g for g, m in zip(goal_txt, met) if m is False]
            note = note_for(group, label.split(" ")[0])
            lines.append(f"- {group} {label}: {'; '.join(which)}." + (f" {note}" if note else ""))
    lines.append("")
    with open(out_md, "w") as f:
        f.write("\n".join(lines))


def write_chart(rows, out_svg):
    series = OrderedDict()
    for (group, op, arg), libs in rows.items():
        if group != "lu" or not arg:
            continue
        for lib, b in libs.items():
            g = gflops(b)
            if g:
                series.setdefault(lib, []).append((int(arg), g))
    W, H, L, R, T, B = 720, 440, 70, 190, 40, 60
    pw, ph = W - L - R, H - T - B
    ns = sorted({n for pts in series.values() for n, _ in pts}) or [1, 2]
    xmin, xmax = math.log2(ns[0]), math.log2(ns[-1]) if len(ns) > 1 else math.log2(ns[0]) + 1
    ymax = max([g for pts in series.values() for _, g in pts] + [1.0])
    step = next(s for s in (1, 2, 5, 10, 20, 50, 100) if ymax / s <= 8)
    ymax = math.ceil(ymax / step) * step

    def X(n):
        return L + (math.log2(n) - xmin) / (xmax - xmin) * pw

    def Y(g):
        return T + ph - g / ymax * ph

    colors = {"znmt64": "#d62728", "openblas": "#1f77b4", "eigen": "#2ca02c", "crout_reference": "#7f7f7f"}
    out = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{W}" height="{H}" font-family="sans-serif" font-size="12">',
           f'<rect width="{W}" height="{H}" fill="white"/>',
           f'<text x="{L + pw / 2}" y="22" text-anchor="middle" font-size="15">LU decomposition + one solve, one thread</text>']
    y = 0
    while y <= ymax + 1e-9:
        out.append(f'<line x1="{L}" y1="{Y(y):.1f}" x2="{L + pw}" y2="{Y(y):.1f}" stroke="#ddd"/>')
        out.append(f'<text x="{L - 8}" y="{Y(y) + 4:.1f}" text-anchor="end">{y:g}</text>')
        y += step
    for n in ns:
        out.append(f'<line x1="{X(n):.1f}" y1="{T}" x2="{X(n):.1f}" y2="{T + ph}" stroke="#eee"/>')
        out.append(f'<text x="{X(n):.1f}" y="{T + ph + 18}" text-anchor="middle">{n}</text>')
    out.append(f'<rect x="{L}" y="{T}" width="{pw}" height="{ph}" fill="none" stroke="#333"/>')
    out.append(f'<text x="{L + pw / 2}" y="{H - 15}" text-anchor="middle">n (matrix order, log scale)</text>')
    out.append(f'<text x="18" y="{T + ph / 2}" text-anchor="middle" transform="rotate(-90 18 {T + ph / 2})">GFLOP/s (2/3 n³ per solve)</text>')
    for i, (lib, pts) in enumerate(series.items()):
        pts.sort()
        c = colors.get(lib, "#9467bd")
        path = " ".join(f"{'M' if j == 0 else 'L'}{X(n):.1f},{Y(g):.1f}" for j, (n, g) in enumerate(pts))
        out.append(f'<path d="{path}" fill="none" stroke="{c}" stroke-width="2"/>')
        for n, g in pts:
            out.append(f'<circle cx="{X(n):.1f}" cy="{Y(g):.1f}" r="3" fill="{c}"/>')
        ly = T + 20 + 22 * i
        out.append(f'<line x1="{L + pw + 15}" y1="{ly}" x2="{L + pw + 40}" y2="{ly}" stroke="{c}" stroke-width="2"/>')
        out.append(f'<text x="{L + pw + 46}" y="{ly + 4}">{ANCHOR_NAMES.get(lib, lib)}</text>')
    out.append("</svg>")
    with open(out_svg, "w") as f:
        f.write("\n".join(out) + "\n")


def main():
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    context, rows = load(sys.argv[1])
    write_chart(rows, sys.argv[3])
    write_report(context, rows, sys.argv[2], sys.argv[3].rsplit("/", 1)[-1])


if __name__ == "__main__":
    main()

#!/usr/bin/env python3
"""Fault campaign: apply each fault patch, rebuild, run the tests the change can reach, record
which tests fail, revert. See README.md next to this file."""
import argparse, json, os, re, shutil, signal, subprocess, sys, tempfile, time
from concurrent.futures import ThreadPoolExecutor

HERE = os.path.dirname(os.path.abspath(__file__))
REPO = os.path.dirname(os.path.dirname(HERE))
# Slow, and they test packaging and a browser rather than the program's behaviour.
LEFT_OUT = {"package_deb", "batch_report_in_browser"}
# The test preset's environment (CMakePresets.json), which ctest would add.
BASE_ENV = {
    "QT_QPA_PLATFORM": "offscreen",
    "ASAN_OPTIONS": "detect_leaks=1:abort_on_error=0:strict_string_checks=1",
    "UBSAN_OPTIONS": "print_stacktrace=1:halt_on_error=1",
}
RUN_RE = re.compile(r"^\[ RUN      \] (\S+)")
END_RE = re.compile(r"^\[ +(OK|FAILED|SKIPPED) +\] (\S+?)(,| \(|$)")


def log(*a):
    print(*a, flush=True)


def sh(cmd, **kw):
    return subprocess.run(cmd, text=True, capture_output=True, **kw)


class Unit:
    """One thing to run: a gtest executable (all its tests in one process) or one ctest entry."""

    def __init__(self, name, kind, command, cwd, env):
        self.name, self.kind, self.command, self.cwd, self.env = name, kind, command, cwd, env
        self.reach = set()
        self.seconds = 0.0


def discover_units(build):
    out = sh(["ctest", "--test-dir", build, "--show-only=json-v1"])
    if out.returncode != 0:
        sys.exit("ctest could not list the tests:\n" + out.stderr)
    units = {}
    for t in json.loads(out.stdout)["tests"]:
        if t["name"] in LEFT_OUT or not t.get("command"):
            continue
        props = {p["name"]: p["value"] for p in t.get("properties", [])}
        env = dict(e.split("=", 1) for e in props.get("ENVIRONMENT", []))
        cwd = props.get("WORKING_DIRECTORY", build)
        cmd = t["command"]
        # A gtest program: one entry per case (gtest_discover_tests) or per program (--gtest_brief).
        if any(a.startswith("--gtest_filter=") or a == "--gtest_brief=1" for a in cmd[1:]):
            exe = cmd[0]
            name = os.path.basename(exe)
            if name not in units:
                units[name] = Unit(name, "gtest", [exe, "--gtest_also_run_disabled_tests"], cwd, env)
        else:
            units[t["name"]] = Unit(t["name"], "ctest", cmd, cwd, env)
    return list(units.values())


def ninja_inputs(build, target, cache):
    if target not in cache:
        out = sh(["ninja", "-C", build, "-t", "inputs", target])
        cache[target] = set(out.stdout.split()) if out.returncode == 0 else set()
    return cache[target]


def compute_reach(build, units):
    """Build artefacts (paths relative to the build folder) each unit can reach."""
    cache = {}
    reader = "libZyrReaderLowLevelAPI.so"
    # Started or loaded at run time by the reader library, so not in the link graph.
    runtime = ["zyrreader-pluginhost"] + sorted(
        os.path.relpath(os.path.join(d, f), build)
        for d, _, fs in os.walk(os.path.join(build, "plugins")) for f in fs
        if f.startswith("KVDECODE_") and f.endswith(".so"))
    for u in units:
        targets = []
        for arg in u.command:
            if os.path.abspath(arg) == os.path.abspath(build):
                # Installs the SDK from the build: the plug-in kit is its only compiled part.
                targets.append("plugins/Kit/libglyphor_plugin_kit.a")
            elif arg.startswith(build + "/") and os.path.isfile(arg):
                targets.append(os.path.relpath(arg, build))
        for t in targets:
            u.reach.add(t)
            u.reach |= ninja_inputs(build, t, cache)
        if reader in u.reach:
            for r in runtime:
                u.reach.add(r)
                u.reach |= ninja_inputs(build, r, cache)


def snapshot(build):
    stamp = {}
    for d, dirs, files in os.walk(build):
        dirs[:] = [x for x in dirs if x not in ("CMakeFiles", "Testing", ".cmake")]
        for f in files:
            p = os.path.join(d, f)
            try:
                stamp[os.path.relpath(p, build)] = os.stat(p).st_mtime_ns
            except OSError:
                pass
    return stamp


def build_tree(build, jobs):
    before = snapshot(build)
    t0 = time.time()
    out = sh(["cmake", "--build", build, "-j", str(jobs)])
    after = snapshot(build)
    changed = {p for p, m in after.items() if before.get(p) != m}
    return out.returncode == 0, out.stdout + out.stderr, changed, time.time() - t0


def kill_group(proc):
    try:
        os.killpg(proc.pid, signal.SIGKILL)
    except ProcessLookupError:
        pass


def run_gtest(u, timeout, tmp):
    """Returns the failing tests, named exe:Suite.Test, or a crash/timeout marker."""
    env = {**os.environ, **BASE_ENV, **u.env, "TMPDIR": tmp}
    logf = os.path.join(tmp, "output.log")
    with open(logf, "w") as out:
        proc = subprocess.Popen(u.command, cwd=u.cwd, env=env, stdout=out, stderr=subprocess.STDOUT,
                                start_new_session=True)
        try:
            rc = proc.wait(timeout=timeout)
        except subprocess.TimeoutExpired:
            kill_group(proc)
            proc.wait()
            rc = None
    failed, running = [], None
    with open(logf, errors="replace") as f:
        for line in f:
            m = RUN_RE.match(line)
            if m:
                running = m.group(1)
                continue
            m = END_RE.match(line)
            if m and m.group(2) == running:
                if m.group(1) == "FAILED":
                    failed.append(f"{u.name}:{running}")
                running = None
    if rc is None:
        return failed + [f"{u.name} (timeout)"], logf
    if rc != 0 and running:
        return failed + [f"{u.name} (crash in {running})"], logf
    if rc != 0 and not failed:
        return [f"{u.name} (exit status {rc} after its tests)"], logf
    return failed, logf


def run_ctest(build, u, timeout, tmp):
    env = {**os.environ, **BASE_ENV, "TMPDIR": tmp}
    out = sh(["ctest", "--test-dir", build, "-R", "^" + re.escape(u.name) + "$", "--timeout",
              str(timeout), "--output-on-failure"], env=env)
    logf = os.path.join(tmp, "output.log")
    with open(logf, "w") as f:
        f.write(out.stdout + out.stderr)
    if re.search(r"^\s*Start\s+\d+: " + re.escape(u.name) + r"$", out.stdout, re.M) is None:
        return [f"{u.name} (did not start)"], logf
    m = re.search(r"\d+ - " + re.escape(u.name) + r" \(([^)]*)\)", out.stdout)
    if m:
        what = m.group(1)
        if what == "Failed":
            return [u.name], logf
        return [f"{u.name} ({'timeout' if 'Timeout' in what else 'crash: ' + what})"], logf
    return [], logf


def run_units(build, units, timeout, jobs, keep_logs=None):
    """Runs the units two at a time, longest first; returns {unit name: failures}."""
    results = {}

    def one(u):
        tmp = tempfile.mkdtemp(prefix="glyphor-fault-")
        t0 = time.time()
        try:
            if u.kind == "gtest":
                fails, logf = run_gtest(u, timeout, tmp)
            else:
                fails, logf = run_ctest(build, u, timeout, tmp)
            if keep_logs and fails:
                shutil.copy(logf, os.path.join(keep_logs, u.name + ".log"))
        finally:
            shutil.rmtree(tmp, ignore_errors=True)
        u.seconds = time.time() - t0
        return u.name, fails

    with ThreadPoolExecutor(max_workers=jobs) as pool:
        for name, fails in pool.map(one, sorted(units, key=lambda u: -u.seconds)):
            results[name] = fails
    return results


def git_apply(patch, reverse=False):
    cmd = ["git", "-C", REPO, "apply"] + (["-R"] if reverse else []) + [patch]
    return sh(cmd)


def main():
    ap = argparse.ArgumentParser(description=__doc__)
    ap.add_argument("build", nargs="?", default=os.path.join(REPO, "build-test"))
    ap.add_argument("patches", nargs="*")
    ap.add_argument("--label", default=os.environ.get("FAULT_LABEL", "run"))
    ap.add_argument("--timeout", type=int, default=int(os.environ.get("FAULT_TIMEOUT", "300")))
    ap.add_argument("-j", "--jobs", type=int, default=2)
    ap.add_argument("--recheck", metavar="RESULTS_TSV",
                    help="a results table of an earlier run: per fault, run first the programs whose "
                         "tests caught it then; only when none catches it now, run everything it reaches")
    args = ap.parse_args()
    # run.sh BUILD_DIR is optional: a first argument that is a patch starts the patch list.
    if args.build.endswith(".patch"):
        args.patches.insert(0, args.build)
        args.build = os.path.join(REPO, "build-test")
    build = os.path.abspath(args.build)
    patches = [os.path.abspath(p) for p in args.patches] or sorted(
        os.path.join(HERE, f) for f in os.listdir(HERE) if f.endswith(".patch"))
    logs = os.path.join(build, "fault-logs-" + args.label)
    shutil.rmtree(logs, ignore_errors=True)
    os.makedirs(logs)
    started = time.time()
    earlier = {}
    if args.recheck:
        with open(args.recheck) as f:
            for line in f.read().splitlines()[1:]:
                cells = line.split("\t")
                if len(cells) == 3 and cells[1] == "yes":
                    # "program:Suite.Test" or "program (crash in ...)" or a ctest entry's name
                    earlier[cells[0]] = {re.split(r"[: ]", c, maxsplit=1)[0] for c in cells[2].split("; ")}

    dirty = [line for line in sh(["git", "-C", REPO, "status", "--porcelain", "--untracked-files=no"]).stdout
             .splitlines() if not line[3:].startswith("tests/faults/")]
    if dirty:
        sys.exit("the checkout has changes; commit or stash them first:\n" + "\n".join(dirty))
    for p in patches:
        chk = sh(["git", "-C", REPO, "apply", "--check", p])
        if chk.returncode != 0:
            sys.exit(f"{os.path.basename(p)} does not apply to this checkout:\n{chk.stderr}")
    if not os.path.exists(os.path.join(build, "build.ninja")):
        cfg = sh(["cmake", "--preset", "test", "-B", build, "-DCMAKE_CXX_COMPILER_LAUNCHER=ccache",
                  "-DCMAKE_C_COMPILER_LAUNCHER=ccache"], cwd=REPO)
        if cfg.returncode != 0:
            sys.exit("configure failed:\n" + cfg.stdout + cfg.stderr)

    ok, text, _, secs = build_tree(build, args.jobs)
    if not ok:
        sys.exit("the unpatched tree does not build:\n" + text[-4000:])
    units = discover_units(build)
    compute_reach(build, units)
    log(f"clean run: {len(units)} test executables and ctest entries (build {secs:.0f} s)")
    t0 = time.time()
    clean_dir = os.path.join(logs, "clean")
    os.makedirs(clean_dir)
    clean = run_units(build, units, args.timeout, args.jobs, clean_dir)
    broken = {f for fails in clean.values() for f in fails}
    log(f"clean run took {time.time() - t0:.0f} s; " +
        ("all green" if not broken else f"{len(broken)} failing without a fault (not counted):"))
    for b in sorted(broken):
        log("  " + b)
    # A unit that crashed or hung on the clean tree cannot tell one fault from another.
    dead = {u.name for u in units if any(f.startswith(u.name + " (") for f in clean[u.name])}

    rows = []
    current = None

    def revert():
        nonlocal current
        if current:
            undo = git_apply(current, reverse=True)
            if undo.returncode != 0:
                sys.exit(f"{os.path.basename(current)} does not revert; the tree holds it:\n{undo.stderr}")
            current = None

    def on_signal(*_):
        revert()
        sys.exit("interrupted; the fault in place was reverted")

    signal.signal(signal.SIGINT, on_signal)
    signal.signal(signal.SIGTERM, on_signal)
    try:
        for i, p in enumerate(patches, 1):
            fault = os.path.basename(p)[:-len(".patch")]
            t0 = time.time()
            affected = []
            res = git_apply(p)
            if res.returncode != 0:
                rows.append((fault, "error", "does not apply: " + res.stderr.strip().replace("\n", " ")))
                continue
            current = p
            ok, text, changed, bsecs = build_tree(build, args.jobs)
            if not ok:
                with open(os.path.join(logs, fault + ".build.log"), "w") as f:
                    f.write(text)
                rows.append((fault, "error", "does not build"))
            else:
                affected = [u for u in units if u.name not in dead and u.reach & changed]
                fault_logs = os.path.join(logs, fault)
                os.makedirs(fault_logs)
                first = [u for u in affected if u.name in earlier.get(fault, ())]
                res = run_units(build, first, args.timeout, args.jobs, fault_logs) if first else {}
                catchers = sorted(f for fails in res.values() for f in fails if f not in broken)
                if not catchers:
                    rest = [u for u in affected if u not in first]
                    res = run_units(build, rest, args.timeout, args.jobs, fault_logs)
                    catchers = sorted(f for fails in res.values() for f in fails if f not in broken)
                else:
                    affected = first
                if not changed:
                    note = "no artefact changed"
                elif not affected:
                    note = "no test reaches the change"
                else:
                    note = ""
                rows.append((fault, "yes" if catchers else "no",
                             "; ".join(catchers) if catchers else note))
            revert()
            ok, text, _, _ = build_tree(build, args.jobs)
            if not ok:
                sys.exit("the tree does not build after reverting " + fault + ":\n" + text[-4000:])
            r = rows[-1]
            log(f"[{i}/{len(patches)}] {fault}: {r[1]} ({time.time() - t0:.0f} s, "
                f"{len(affected)} run) {r[2][:160]}")
    finally:
        revert()

    out = os.path.join(HERE, f"results-{args.label}.tsv")
    # A run of some patches updates their rows and keeps the others of that label.
    table = {}
    if os.path.exists(out):
        with open(out) as f:
            for line in f.read().splitlines()[1:]:
                cells = line.split("\t")
                if len(cells) == 3:
                    table[cells[0]] = tuple(cells)
    table.update({r[0]: r for r in rows})
    with open(out, "w") as f:
        f.write("fault\tcaught\tcatching tests\n")
        for name in sorted(table):
            f.write("\t".join(table[name]) + "\n")
    caught = sum(r[1] == "yes" for r in rows)
    log(f"\n{caught} of {len(rows)} faults caught; results in {os.path.relpath(out, REPO)}")
    for r in rows:
        if r[1] != "yes":
            log(f"  not caught: {r[0]} ({r[1]}) {r[2]}")
    single = [r for r in rows if r[1] == "yes" and len(r[2].split("; ")) == 1]
    log(f"{len(single)} caught by exactly one test:")
    for r in single:
        log(f"  {r[0]}: {r[2]}")
    if broken:
        log("failing without a fault: " + " ".join(sorted(broken)))
    log(f"campaign took {time.time() - started:.0f} s")


if __name__ == "__main__":
    main()

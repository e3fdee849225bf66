#!/usr/bin/env python3
"""Puts single faults into the sources of the libraries and counts how many the tests notice.

    tests/mutation/mutate.py --count 200 --seed 1 --build build/dev --report report.txt

For each fault the library is built again and only the tests of the class that holds it are run. The sources are
changed in place and put back, also when the script is interrupted: best in a clone of its own. A fault that does not
compile, or leaves the object file as it was, is replaced by another one. The same seed gives the same faults as long as
the sources are the same.

Faults that nobody can notice are listed in equivalent.txt, with the reason, and left out.

The exit status is 0 if at least --least per cent were noticed.
"""

import argparse
import hashlib
import pathlib
import random
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parents[2]
FOLDERS = ["tq_utl/src", "pkBase/src", "pkBaseQt/src", "housekeeping/src", "housekeeping/gui/src"]
OTHER_SYSTEMS = ("_win",)

EQUIVALENT = pathlib.Path(__file__).with_name("equivalent.txt")

# Classes that tests compile themselves, as most classes do that do their work in their headers, and these tests.
TESTS = {
    "housekeeping/include/tarqa/housekeeping/ErrorProtocolOutput.h": "test_error_log",
    "housekeeping/include/tarqa/housekeeping/Identifier.h": "test_foundation",
    "housekeeping/include/tarqa/housekeeping/MessageFamily.h": "test_messaging",
    "housekeeping/include/tarqa/housekeeping/NamedFactory.h": "test_foundation",
    "housekeeping/src/QtLockedFile.cpp": "test_locked_file",
    "housekeeping/src/QtLockedFile_unix.cpp": "test_locked_file",
    "pkBase/include/pkBase/pkSingleton.h": "test_pkBase",
}

# The suites of a class are those whose names begin with the class's; these sources are not classes of their own.
SUITES = {
    "ApplicationManagerSettings": "ApplicationManager|DerivedSettings|Settings|MouseMode|Graphics",
    "ApplicationManager": "ApplicationManager|MainLoop|StartUp|Shutdown|Notify|TopLevelWidget|Translation|WithoutWindows|"
                          "Proxy|.*LogHook|PowerEvents|LockFile|Paths|Graphics|CommandLine|Init",
    "ErrorProtocolOutput": "ErrorProtocol",
    "LogFile": "ErrorProtocol|LogFile",
    "LogHooks": ".*LogHook",
    "LoginSession": "ApplicationManager|LoginSession|Lock",
    "Platform": "ApplicationManager|Platform|Init|Paths|Lock",
    "PowerEvents": "PowerEvents|SystemSleep",
    "QTarqaApplication": "ApplicationManagerInit|Notify|QTarqaApplication|PowerEvents|SystemSleep|MainLoop",
    "QuickHelpDescriptionEntry": "QuickHelpDescriptionEntry|AbstractQuickHelp",
    "QuickHelpInputModelFilter": "QuickHelp",
    "QuickHelpKeySequenceEntry": "QuickHelpKeySequenceEntry|AbstractQuickHelp",
    "QuickHelpMouseButtonEntry": "QuickHelpMouseButtonEntry|AbstractQuickHelp",
    "QuickHelpMouseWheelEntry": "QuickHelpMouseWheelEntry|AbstractQuickHelp",
    "QuickHelpTitleEntry": "QuickHelpTitleEntry|AbstractQuickHelp",
    "QuickHelpInputModel": "QuickHelp",
    "AbstractQuickHelpEntry": "QuickHelp|AbstractQuickHelp",
    "AbstractQuickHelpInputEntry": "QuickHelp|AbstractQuickHelp",
    "ChildDockWidget": "FloatingPanel|ClosedFloat|AbstractMainWindow|Panel",
    "AbstractMainWindow": "AbstractMainWindow|FloatingPanel|ClosedFloat|Panel|MainWindowMessage",
    "MainWindowMessage": "MainWindowMessage|.*Entries",
    "AbstractController": "AbstractController|ControllerLocker",
    "UndoRedoController": "UndoRedo",
    "UndoRedoSide": "UndoRedo",
    "UndoRedoPresentation": "UndoRedo",
    "UndoRedoPresentationFactory": "UndoRedo|Presentation",
    "Notice": "HelpManager|Notice",
    "OpenOutside": "HelpManager|QHelpWebView|OpenOutside",
    "LiveMainWindow": "HelpManager|Preferences|LiveMainWindow",
    "QHelpWebViewPage": "QHelpWebView",
    "CallStack": "Tripwire",
    "DyingProgram": "LastWords",
    "GuardedLocker": "Tripwire",
    "LockTable": "LockTable|Tripwire",
    "LogTail": "QLogFileViewer|LogTail",
    "ModalBox": "ErrorHandler|LastWords",
    "RunningCommand": "LastWords",
    "WordsWriter": "LastWords",
    "TemporaryDirectoryLock": "TemporaryDirectory",
    "PasswordEntry": "UserName|PasswordEntry|User",
    "CommandMessage": "CommandMessage|Message",
    "AbstractDocumentHistory": "AbstractDocumentHistory|History",
    "DocumentManager": "Document",
    "AbstractDocument": "AbstractDocument|Document",
    "AbstractCommand": "AbstractCommand|Command",
    "TarqStyle": "TarqStyle|ApplicationManager|Style",
    "OSGLogFileHandler": ".*LogHook",
    "QtLockedFile": "QtLockedFile|ApplicationManager|Lock",
    "UndoRedoControllerFactory": "UndoRedoController|ControllerManager",
    "ProgressBarsControllerFactory": "ProgressBarsController|ControllerManager",
}

COMPARISONS = {"==": "!=", "!=": "==", " < ": " <= ", " <= ": " < ", " > ": " >= ", " >= ": " > "}


class Fault:
    def __init__(self, path, line, kind, before, after, extra=0):
        self.path, self.line, self.kind = path, line, kind
        self.before, self.after = before, after  # lists of lines
        self.extra = extra

    def __str__(self):
        text = [f"{self.path.relative_to(ROOT)}:{self.line + 1} {self.kind}"]
        text += [f"  - {line.strip()}" for line in self.before]
        text += [f"  + {line.strip()}" for line in self.after]
        return "\n".join(text)


def masked(text):
    """The text with comments and the contents of literals blanked out, of the same length."""
    def blank(match):
        found = match.group(0)
        if found.startswith("/"):
            return re.sub(r"[^\n]", " ", found)
        return found[0] + " " * (len(found) - 2) + found[-1]
    return re.sub(r'//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\'', blank, text, flags=re.S)


def is_statement(line):
    """Whether a line is one whole statement that may be left out or change its place."""
    stripped = line.strip()
    if not stripped.endswith(";") or stripped.count("(") != stripped.count(")") or stripped.count("{") != stripped.count("}"):
        return False
    if stripped.startswith("~") or stripped.endswith((" override;", "= default;", "= delete;")):
        return False  # declarations
    if re.match(r"(=|return|throw|break|continue|using|typedef|static|const|auto|class|struct|enum|public|case|default|friend|"
                r"Q_|template|extern|#|else|\}|\.|,|\?|:|&|\||<<|\+)", stripped):
        return False
    return bool(re.match(r"[A-Za-z_:>\-\.\[\]\(\)\*~, ]*(\(|=|\+\+|--)", stripped)) and line.startswith("    ")


def faults_of(path):
    text = path.read_text()
    lines = text.split("\n")
    plain = masked(text).split("\n")
    found = []
    inside = re.compile(r"^\s")
    for number, (line, bare) in enumerate(zip(lines, plain)):
        if bare.lstrip().startswith("#") or not bare.strip():
            continue
        is_code = bool(inside.match(line)) or " = " in bare or "const" in bare

        def change(kind, start, end, new):
            found.append(Fault(path, number, kind, [line], [line[:start] + new + line[end:]]))

        if is_code:
            for match in re.finditer(r"(?<![\w.%])\d+(?![\w.])", bare):
                change("constant", match.start(), match.end(), str(int(match.group(0)) + 1))
            for match in re.finditer(r"\b(true|false)\b", bare):
                change("constant", match.start(), match.end(), "false" if match.group(0) == "true" else "true")
            for match in re.finditer(r"==|!=| <= | >= | < | > ", bare):
                if "template" not in bare and "operator" not in bare and "#include" not in bare:
                    change("condition", match.start(), match.end(), COMPARISONS[match.group(0)])
            for match in re.finditer(r"&&|\|\|", bare):
                if not re.search(r"[\w>]&& ?\w+[,)]", bare[max(0, match.start() - 1):]):
                    change("condition", match.start(), match.end(), "||" if match.group(0) == "&&" else "&&")
            for match in re.finditer(r"if \((?=.)", bare):
                if bare.rstrip().endswith(") {"):
                    end = bare.rstrip().rindex(") {")
                    found.append(Fault(path, number, "condition", [line],
                                       [line[:match.end()] + "!(" + line[match.end():end] + ")" + line[end:]]))
            for match in re.finditer(r'"( +)"', bare):
                content = line[match.start() + 1:match.end() - 1]
                letters = [i for i, c in enumerate(content) if c.isalpha() and (i == 0 or content[i - 1] not in "\\%")]
                if letters:
                    at = match.start() + 1 + letters[len(letters) // 2]
                    change("text", at, at + 1, "x" if line[at] != "x" else "y")
        if is_statement(bare):
            found.append(Fault(path, number, "dropped statement", [line], [""]))
            # Of two statements that call nothing the order hardly ever matters.
            if number + 1 < len(lines) and is_statement(plain[number + 1]) \
                    and "(" in bare and "(" in plain[number + 1] and line != lines[number + 1] \
                    and len(line) - len(line.lstrip()) == len(lines[number + 1]) - len(lines[number + 1].lstrip()):
                found.append(Fault(path, number, "order", [line, lines[number + 1]], [lines[number + 1], line]))
    return found


def without_equivalent_ones(pool):
    """The faults but for those that the list beside this script says nobody can notice."""
    entries = re.findall(r"^(\S+) ([a-z ]+)\n((?:  [-+] .*\n)+)  because", EQUIVALENT.read_text(), flags=re.M)
    known = {(name, f"{kind}\n{change}".strip()) for name, kind, change in entries}

    def key(fault):
        where, change = str(fault).split("\n", 1)
        return where.split(":")[0], f"{fault.kind}\n{change}".strip()

    return {path: [fault for fault in faults if key(fault) not in known] for path, faults in pool.items()}


def again(pool, report):
    """The faults that a report says nobody noticed, as far as their lines are still there."""
    wanted = re.findall(r"^ *\d+ SURVIVED (\S+):(\d+) (.+)\n((?:  [-+] .*\n)+)", report.read_text(), flags=re.M)
    for name, line, kind, change in wanted:
        same = [fault for faults in pool.values() for fault in faults
                if str(fault.path.relative_to(ROOT)) == name and str(fault).split("\n", 1)[1] + "\n" == change]
        if same:
            yield min(same, key=lambda fault: abs(fault.line + 1 - int(line)))
        else:
            print(f"no longer there: {name}:{line} {kind}\n{change}", file=sys.stderr)


def class_of(path):
    return re.sub(r"_unix$", "", path.stem)


def suites_of(path):
    name = class_of(path)
    return SUITES.get(name, name)


def sources():
    for folder in FOLDERS:
        for path in sorted((ROOT / folder).glob("*.cpp")):
            if not path.stem.endswith(OTHER_SYSTEMS):
                yield path
    for path in sorted(TESTS):
        if path.endswith(".h"):
            yield ROOT / path


def tests_of(fault):
    """A regular expression for the tests of the fault's class; texts are looked at by the table of texts as well."""
    suites = rf"(^|/)({suites_of(fault.path)})[^.]*\."
    return suites + r"|/Texts\." if fault.kind == "text" else suites


def apply(fault, lines, new):
    changed = list(lines)
    changed[fault.line:fault.line + len(fault.before)] = new
    return "\n".join(changed)


def run(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options)


def checksum_of_libraries(build):
    total = hashlib.sha256()
    for library in sorted(build.glob("**/lib*.so.*")):
        if not library.is_symlink():
            total.update(library.read_bytes())
    return total.hexdigest()


def main():
    options = argparse.ArgumentParser(description=__doc__.split("\n")[0])
    options.add_argument("--count", type=int, default=200)
    options.add_argument("--seed", type=int, default=1)
    options.add_argument("--least", type=float, default=95)
    options.add_argument("--build", type=pathlib.Path, default=ROOT / "build" / "dev")
    options.add_argument("--only", default="", help="a regular expression for sources")
    options.add_argument("--report", type=pathlib.Path)
    options.add_argument("--again", type=pathlib.Path, help="only the faults that survived according to this report")
    options.add_argument("--list", action="store_true", help="only say which faults there would be")
    chosen = options.parse_args()

    pool = {path: faults_of(path) for path in sources() if re.search(chosen.only, str(path.relative_to(ROOT)))}
    pool = {path: faults for path, faults in without_equivalent_ones(pool).items() if faults}
    dice = random.Random(chosen.seed)
    for faults in pool.values():
        dice.shuffle(faults)
    report = open(chosen.report, "w") if chosen.report else sys.stdout

    def tell(text):
        print(text, file=report, flush=True)

    def next_fault():
        """Every class has its turn, and in it every kind of fault."""
        order = []
        while True:
            if not order:
                order = [path for path in pool if pool[path]]
                dice.shuffle(order)
                if not order:
                    return None
            path = order.pop()
            if not pool[path]:
                continue
            kinds = sorted({fault.kind for fault in pool[path]})
            kind = dice.choice(kinds)
            fault = next(fault for fault in pool[path] if fault.kind == kind)
            pool[path].remove(fault)
            return fault

    chosen_again = again(pool, chosen.again) if chosen.again else None
    tried = caught = 0
    survivors = []
    libraries = ["tq_utl", "pkBase", "pkBaseQt", "tq_hk"]
    while tried < chosen.count:
        fault = next(chosen_again, None) if chosen_again else next_fault()
        if fault is None:
            break
        if chosen.list:
            tried += 1
            tell(str(fault))
            continue
        original = fault.path.read_text()
        lines = original.split("\n")
        before = checksum_of_libraries(chosen.build)
        try:
            fault.path.write_text(apply(fault, lines, fault.after))
            built = run(["cmake", "--build", str(chosen.build), "--target"] + libraries)
            if built.returncode != 0 or checksum_of_libraries(chosen.build) == before:
                continue
            tests = built
            target = TESTS.get(str(fault.path.relative_to(ROOT)))
            if target:
                tests = run(["cmake", "--build", str(chosen.build), "--target", target])
            if tests.returncode == 0:
                tests = run(["ctest", "--test-dir", str(chosen.build), "-j2", "--stop-on-failure", "--timeout", "60",
                             "--no-tests=error", "-R", tests_of(fault)])
        finally:
            fault.path.write_text(original)
        tried += 1
        if tests.returncode != 0:
            caught += 1
            if "No tests were found" in tests.stdout:
                tell(f"NO TESTS for {suites_of(fault.path)}")
                caught -= 1
                survivors.append(fault)
            failed = re.findall(r"Test +#\d+: (\S+)[ .]*\*\*\*", tests.stdout)
            tell(f"{tried:4} caught   {fault}\n  by {failed[0] if failed else 'the tests that no longer compile'}")
        else:
            survivors.append(fault)
            tell(f"{tried:4} SURVIVED {fault}")
    run(["cmake", "--build", str(chosen.build), "--target"] + libraries)
    if tried and not chosen.list:
        rate = 100 * caught / tried
        tell(f"\n{caught} of {tried} faults were noticed: {rate:.1f} %")
        for fault in survivors:
            tell(str(fault))
        return 0 if rate >= chosen.least else 1
    return 0


if __name__ == "__main__":
    sys.exit(main())

"""What scripts/families makes of the tables of kind = "matrix": functions of dense matrices, in double and in single
precision.

An operation has `sizes`, the sides that its shapes are made of, and `arguments` in the order of the prototype: "a m n"
is a matrix with a step, "w[m]" an array of reals, "rcond" one real; "int32_t pivots[n]" says another type. Behind ">"
stands what is written, "?" marks what may be null. `parameters` follow the sizes. `needs` is a relation of the sizes,
checked behind the steps. `doubles` is the length of the work buffer; an operation without it has none. Where it is
`pooled`, there is a form ending in _MT too. The exports check pointers, sizes and steps, and call the worker
matrix<name>, which gets matrices as views. See optim/matrix/matrix_factor.toml."""
import re

TYPES = {"f64": "double", "f32": "float"}
ARGUMENT = re.compile(r"(?P<out>> )?(?:(?P<type>int32_t) )?(?P<name>\w+)(?P<null>\?)?"
                      r"(?:\[(?P<count>.+)\]| (?P<shape>\S.*))?")


class Argument:
    def __init__(self, text):
        match = ARGUMENT.fullmatch(text)
        self.name, self.type, self.out, self.may_be_null = match["name"], match["type"], match["out"], match["null"]
        sides = re.findall(r"min\(\w, \w\)|\w+", match["shape"] or "")
        self.shape = [side.replace("min", "std::min") for side in sides]

    def declared(self, real):
        pointer = f"{'' if self.out else 'const '}{self.type or real}* {self.name}"
        return [pointer, f"int32_t {self.name}Step"] if self.shape else [pointer]

    def passed(self):
        return f"{{{self.name}, {self.name}Step, {', '.join(self.shape)}}}" if self.shape else self.name

    def step_check(self):
        fits = f"{self.name}Step >= {self.shape[1]}"
        return f"(!{self.name} || {fits})" if self.may_be_null else fits


class Operation:
    def __init__(self, said):
        self.said, self.name, self.sizes = said, said["name"], said["sizes"].split()
        self.arguments = [Argument(text) for text in said["arguments"]]
        self.parameters = said.get("parameters", [])
        self.doubles, self.is_pooled = said.get("doubles"), said.get("pooled", False)

    def declared(self, real, on_pool=False):
        threads = ["void* pool", "uint32_t threads"] if on_pool else []
        own = [text for each in self.arguments for text in each.declared(real)]
        return threads + own + [f"int32_t {side}" for side in self.sizes] + self.parameters + (
            ["void* buffer"] if self.doubles else [])

    def prototype(self, suffix, on_pool=False):
        ending = "_MT" if on_pool else ""
        return f"DaxStatus PRMT_MAT_{self.name}_{suffix}{ending}({', '.join(self.declared(TYPES[suffix], on_pool))})"

    def query(self, suffix):
        sides = [f"int32_t {side}" for side in self.sizes]
        return f"DaxStatus PRMT_MAT_{self.name}_BufferSize_{suffix}({', '.join([*sides, 'uint64_t* bytes'])})"

    def prototypes(self):
        return [self.prototype(suffix, on_pool) for suffix in TYPES
                for on_pool in ([False, True] if self.is_pooled else [False])]

    def checked(self):
        """The template that all exports but the query call."""
        pointers = [each.name for each in self.arguments if not each.may_be_null] + (["buffer"] if self.doubles else [])
        steps = [each.step_check() for each in self.arguments if each.shape]
        needs = [f"DAX_REQUIRE({self.said['needs']}, DAX_STS_BAD_SIZE);"] if "needs" in self.said else []
        declared = (["PoolThreads on"] if self.is_pooled else []) + self.declared("T")
        passed = (["on"] if self.is_pooled else []) + [each.passed() for each in self.arguments]
        passed += names(self.parameters) + (["buffer"] if self.doubles else [])
        lines = [f"DAX_REQUIRE({' && '.join(pointers)}, DAX_STS_NULL_POINTER);",
                 f"DAX_REQUIRE(areSides({{{', '.join(self.sizes)}}}), DAX_STS_BAD_SIZE);",
                 f"DAX_REQUIRE({' && '.join(steps)}, DAX_STS_BAD_STEP);", *needs,
                 f"return matrix{self.name}<T>({', '.join(passed)});"]
        head = f"template <class T>\nDaxStatus checked{self.name}({', '.join(declared)}) {{\n"
        return head + "\n".join(lines) + "\n}\n"

    def forwards(self):
        for suffix, real in TYPES.items():
            for on_pool in [False, True] if self.is_pooled else [False]:
                passed = names(self.declared(real))
                if self.is_pooled:
                    passed.insert(0, "dax::PoolThreads{pool, threads}" if on_pool else "dax::PoolThreads{}")
                call = f"dax::checked{self.name}<{real}>({', '.join(passed)})"
                yield f"{self.prototype(suffix, on_pool)} {{ return {call}; }}\n"
            if self.doubles:
                wide = re.sub(r"\b([a-z])\b(?!\()", r"int64_t{\1}", self.doubles)
                bytes_ = f"dax::bytesOf({{{', '.join(self.sizes)}}}, [&] {{ return {wide}; }}, bytes)"
                yield f"{self.query(suffix)} {{ return {bytes_}; }}\n"


def names(declared):
    return [re.search(r"\w+$", text)[0] for text in declared]


def comment(text):
    return "/* " + "\n".join(f" * {line}".rstrip() for line in text.strip().split("\n"))[3:] + " */\n"


def header(table):
    guard = re.sub(r"\W", "_", table["header"]).upper()
    operations = [Operation(said) for said in table["operation"]]
    start = f'#ifndef {guard}\n#define {guard}\n\n#include "../dax/status.h"\n\nDAX_BEGIN_DECLS\n'
    parts = [comment(table["about"]) + start]
    queries = [each.query(suffix) for each in operations if each.doubles for suffix in TYPES]
    if queries:
        parts.append(comment(table["query_text"]) + "".join(f"DAX_API {each};\n" for each in queries))
    for each in operations:
        parts.append(comment(each.said["text"]) + "".join(f"DAX_API {text};\n" for text in each.prototypes()))
    return "\n".join([*parts, "DAX_END_DECLS\n\n#endif\n"])


def forwards(table, stem):
    operations = [Operation(said) for said in table["operation"]]
    checked = "\n".join(each.checked() for each in operations)
    exports = "\n".join(text for each in operations for text in each.forwards())
    return (f'#include "{table["header"]}"\n\n#include <algorithm>\n\n#include "frame/check.h"\n#include "{stem}.h"\n\n'
            f"namespace dax {{\nnamespace {{\n\n{checked}\n}}  // namespace\n}}  // namespace dax\n\n{exports}")

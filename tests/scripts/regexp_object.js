// RegExp objects: exec, test, lastIndex, flags, source and sharing of compiled patterns.
var re = new RegExp("(\\d+)-(\\d+)?", "g");
var text = "a 12-34 b 5- c";
var m = re.exec(text);
print(m + " | " + m.index + " | " + m.input + " | " + re.lastIndex);
m = re.exec(text);
print(m + " | " + m.index + " | " + (m[2] == void 0) + " | " + re.lastIndex);
print(re.exec(text) + " | " + re.lastIndex);

// A non-global exec starts at 0 and a failure resets lastIndex to 0.
var once = new RegExp("b");
once.lastIndex = 7;
print(once.exec("abc").index + " " + once.lastIndex);
print(once.exec("xyz") + " " + once.lastIndex);

// test steps like exec.
var g = new RegExp("o", "g");
print(g.test("foo") + " " + g.lastIndex + " " + g.test("foo") + " " + g.lastIndex + " " + g.test("foo") + " " + g.lastIndex);

// lastIndex beyond the text or negative finds nothing.
g.lastIndex = 10;
print(g.test("foo") + " " + g.lastIndex);
g.lastIndex = -1;
print(g.exec("foo") + " " + g.lastIndex);

// Flags, source and toString.
var all = new RegExp("a/b", "mig");
print(all + " " + all.source + " " + all.global + " " + all.ignoreCase + " " + all.multiline);
print(new RegExp() + " " + new RegExp(void 0, void 0) + " " + RegExp("x", "i"));
all.source = "changed";
all.global = false;
print(all.source + " " + all.global + " " + delete all.lastIndex + " " + delete all.source);

// new RegExp(re) shares the pattern but not lastIndex; RegExp(re) is re itself.
var shared = new RegExp(g);
g.lastIndex = 2;
shared.lastIndex = 0;
print(shared.source + " " + shared.global + " " + g.lastIndex + " " + shared.lastIndex + " " + (RegExp(g) == g) + " " + (shared == g));

// ignoreCase folds ASCII letters only; multiline anchors at line terminators.
print(new RegExp("[a-z]+", "i").exec("12AbC3") + " " + new RegExp("\u00e9", "i").test("\u00c9"));
print(new RegExp("^b$", "m").exec("a\nb\nc").index + " " + new RegExp("^b$").test("a\nb\nc"));

// Zero-width loops end; a negative lookahead leaves its captures unset.
print(new RegExp("(a*)*").exec("b").length + " " + new RegExp("(a*)+").exec("b")[1].length);
print(new RegExp("(?!(a))b").exec("b")[1]);
print(new RegExp("(\\w+)\\s\\1").exec("hello hello world")[1]);
//---
new RegExp("a", "gg");
//---
new RegExp("a", "x");
//---
new RegExp(new RegExp("a"), "g");
//---
RegExp.prototype.exec.call;
RegExp.prototype.toString();
//---
var o = new Object();
o.exec = RegExp.prototype.exec;
o.exec("a");
//---
new RegExp("a{2,1}");
//---
new RegExp("[\\d-z]");
//---
new RegExp("(a");

// Variables read and written again and again in one call or across calls stay the same
// variables when a call deletes, declares or shadows names on the way.
var g = "global g";
var n = "global n";
function deletesParameter(n) { print(n); delete n; print(n); n = 5; print(n); print(g); }
deletesParameter(1);
print(n);
function shadowsByEval() { print(g); eval("var g = 'local g'"); print(g); g = 3; print(g); }
shadowsByEval();
shadowsByEval();
print(g);
function repeatedParameter(a, a) { print(a); print(arguments[0] + " " + arguments[1]); a = 9; print(arguments[1]); }
repeatedParameter(1, 2);
function declaresArguments(x) { var arguments; print(typeof arguments); print(arguments.length); print(x); }
declaresArguments(7);
declaresArguments(8);
function parameterNamedArguments(arguments) { print(arguments); }
parameterNamedArguments(11);
function readsThroughWith(x) { var o = new Object(); o.x = "ox"; with (o) { print(x); x = 4; } print(x); print(o.x); }
readsThroughWith(1);
function manyVariables(a, b, c, d, e, f) { var u, v = 1; print(a + b + c + d + e + f + v); print(u); e = 100; print(arguments[4]); }
manyVariables(1, 2, 3, 4, 5, 6);
manyVariables(6, 5, 4, 3, 2, 1);
function tiedArguments(p) { arguments[0] = "changed"; print(p); p = "again"; print(arguments[0]); delete arguments[0]; p = 3; print(arguments[0]); }
tiedArguments(1);
tiedArguments(2);
function readsGlobal() { print(h); }
function h() {}
readsGlobal();
h = 5;
readsGlobal();
delete h;
function typeofGlobal() { return typeof h; }
print(typeofGlobal());
x1 = 1;
function incrementsGlobal() { x1 = x1 + 1; return x1; }
print(incrementsGlobal());
delete x1;
print(typeof x1);
x1 = 10;
print(incrementsGlobal());
function evalInCall(q) { eval("q = 42"); print(q); eval("var zz = 1"); print(zz); delete q; print(typeof q); }
evalInCall(0);
evalInCall(0);
print(typeof zz);
var made = new Function("a", "b", "var c = a * b; return c + g;");
print(made(6, 7));
print(made(2, 3));
function sumTo(n) { if (n == 0) return 0; return n + sumTo(n - 1); }
print(sumTo(100));
function fresh(k) { var seen; print(seen); seen = k; }
fresh(1);
fresh(2);

// The callee of a call is read after its arguments: arguments that replace or delete it are
// seen by the call, and `this` follows the scope that holds the name.
function first() { return "first"; }
function second() { return "second"; }
function swaps() { first = second; return 0; }
print(first(swaps()));
function selfReplacing(n) { selfReplacing = null; return n; }
print(selfReplacing(5) + " " + selfReplacing);
function thisOf() { return this; }
print(thisOf() == this);
function localCallee() { var f = thisOf; return f() == this; }
print(localCallee());
var holder = new Object();
holder.thisOf = thisOf;
with (holder) { print(thisOf() == holder); }
function callsThroughEval(k) { eval("var k2 = k * 2"); return thisOf() == this && k2; }
print(callsThroughEval(21));
function callsReplacedLocal(p) { return p(p = second); }
print(callsReplacedLocal(first));
function gone() { return "gone ran"; }
function removes() { delete gone; return 1; }
gone(removes());

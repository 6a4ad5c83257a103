// Statement-level recovery: each error is reported with its line, and parsing goes on.
var a = 1
var b = 2 var c = 3;
if (a) function f() { }
x = [1, 2];
y = ;
z = (1 + 2;
w = a.;
v = 1e;
u = 0x;
t = "unterminated
s = '\400';
r = 08;
q = do;
p = x ? y : z = 1;
o = 1 @ 2;
/* a /* nested */ n = 1 ===
 2;
m = new new X()();
print("never run");
//---
function g(a b) { }
//---
function h(a { }
//---
function () { }
//---
function k(a) return a;
//---
/* only a comment */
//---
function e() { return }
//---
function e() {
    return
    ;
}
print("return before a line break is complete");
//---
// The block's own "}" is skipped with the failed statement, so the block runs to the end of
// the text and the errors go on up to the limit of the handler.
{ a: 1 }
b = 2;

// Hostile texts end with the system's own errors, never with a crash.
function repeat(text, count) {
    var result = "";
    var piece = text;
    while (count > 0) {
        if (count % 2 == 1) result = result + piece;
        piece = piece + piece;
        count = count >> 1;
    }
    return result;
}
var deepParens = repeat("(", 100000) + "1" + repeat(")", 100000);
var longChain = "x = 1" + repeat(" + 1", 100000);
var deepBlocks = repeat("{", 50000) + repeat("}", 50000);
var deepUnary = repeat("-", 100000) + "1";
var deepNew = repeat("new ", 100000) + "Object";
var texts = new Array(deepParens, longChain, deepBlocks, deepUnary, deepNew);
for (var i = 0; i < texts.length; i++) print(texts[i].length);
print(repeat("ab", 5));
var nested = "1";
for (i = 0; i < 300; i++) nested = "(" + nested + ")";
print(eval("var ok = " + nested) + " " + ok);
//---
eval(repeat("(", 100000) + "1" + repeat(")", 100000));
//---
eval("x = 1" + repeat(" + 1", 100000));
//---
eval(repeat("{", 50000) + repeat("}", 50000));
//---
eval(repeat("-", 100000) + "1");
//---
eval(repeat("new ", 100000) + "Object");
//---
new Function(repeat("!", 100000) + "1");
//---
function down(n) { return n == 0 ? 0 : down(n - 1) + 1; }
print(down(500));
down(100000);
//---
function viaEval(n) { eval("viaEval(n + 1)"); }
viaEval(0);
//---
var a = new Array();
a.length = 4000000000;
//---
new Array(4294967295);
//---
print("done");
//---
var doubling = "x";
while (true) doubling = doubling + doubling;
//---
var big = new Array(30000);
for (var i = 0; i < 30000; i++) big[i] = "0123456789";
var joined = big.join(big.join());
//---
var itself = new Array(1);
itself[0] = itself;
print(itself.join());

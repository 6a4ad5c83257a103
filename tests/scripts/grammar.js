// Grammar corners: the semicolon rule, new and call chains, for-in forms, reserved words.
var a = 1, b = 2;
a
++b
print(a + " " + b);
a++
b
print(a);
function X() { this.y = X_y; }
function X_y(n) { var r = new Object(); r.z = "z of " + n; return r; }
print(new X().y(1).z);
function Maker() { return Maker_inner; }
function Maker_inner() { this.made = "inner"; }
print(new new Maker()().made);
print(typeof new X);
var o = new Object();
o.p = 1;
for (var i = 0 in o) print(i + " " + typeof i);
var x = 0, y = "then", z = "else";
x ? y : z = 1;
print(z);
var t = 1;
t ? y : z = 2;
print(z);
function returnsEarly() {
    return
    "not returned";
}
print(returnsEarly());
for (var k = 0; k < 2; k++) ;
print(k);
var count = 0;
while (count < 3) count++;
print(count);
if (count == 3) print("if"); else print("else");
if (count != 3) print("if"); else print("else");
{ var inBlock = "blocks do not scope"; }
print(inBlock);
print((1, 2) + (3, 4));
print(1 + /* comment */ 2);
print(1 + // comment
2);
function continues() {
    var s = "";
    for (var n = 0; n < 5; n++) {
        if (n == 2) continue;
        if (n == 4) break;
        s = s + n;
    }
    return s;
}
print(continues());
function loopReturn() { while (true) { for (;;) { return "from inner loop"; } } }
print(loopReturn());
continue;
print("a top-level continue ends the program too");

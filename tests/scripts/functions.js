// new Function and the source text of functions.
var add = new Function("a", "b", "return a + b");
print(add(2, 3));
print(add.toString());
print(add.length);
print(new Function().toString());
print(Function("return 1")());
print(new Function("a, b", "c", "return a + b + c")(1, 2, 3));
print(new Function("x", "y", "return x + y").toString());

function everything(a, b) {
    var i = 0, j, s = "q\"uote\\ \n\r";
    ;
    { }
    { i++; }
    if (a) b = 1; else b = 2;
    if (!a) { b = -1; }
    while (i < 3) i += 1;
    for (; ; ) break;
    for (i = 0; i < 2; i++) continue;
    for (var k = 0, m = 1; k < m; k++) { }
    for (var p in this) { }
    for (j in this) { }
    with (this) { }
    j = a ? b : (a, b);
    j = a || b && !a | b ^ a & b;
    j = a == b != (a < b) <= (a > b) >= (a << 1 >> 2 >>> 3);
    j = a + b - a * b / a % b;
    j *= 1; j /= 1; j %= 1; j += 1; j -= 1; j <<= 1; j >>= 1; j >>>= 1; j &= 1; j ^= 1; j |= 1;
    j = delete a.x + void 0 + typeof a + ++i + --i + i++ + i-- + +a + -a + ~a;
    j = new Object() + new Object + new Array(1, 2).length + this.x + a["y"] + 1.5 + true + false + null;
    return;
}
print(everything.toString());
function oneLine() { return 1 }
print(oneLine);
print(Function.prototype.toString());
print(print.toString());
print(Object.toString());
print(typeof Function.prototype);
print(Function.prototype());
print(Function.prototype.length);
print(add.prototype.constructor == add);

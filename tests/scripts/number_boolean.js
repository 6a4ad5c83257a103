// Number and Boolean constructors, wrappers and prototypes.
print(Number() + " " + Number(void 0) + " " + Number("") + " " + Number(" 12 ") + " " + Number("0x1F") + " " + Number(true) + " " + Number("1e3"));
print(typeof Number(1) + " " + typeof new Number(1) + " " + new Number(7) + " " + new Number().valueOf() + " " + new Number("x"));
print(Number.MAX_VALUE + " " + Number.MIN_VALUE + " " + Number.NaN + " " + Number.NEGATIVE_INFINITY + " " + Number.POSITIVE_INFINITY);
Number.MAX_VALUE = 1;
print(Number.MAX_VALUE + " " + delete Number.NaN + " " + Number.length + " " + Number.prototype.valueOf());

// toString with a radix: 10 converts, 2 to 35 give the empty text.
print((255).toString() + "|" + (255).toString(10) + "|" + (255).toString(16) + "|" + (255).toString(2) + "|" + (255).toString(35) + "|" + (-1.5).toString(10));
print((255).toString(void 0) + "|" + new Number(3).toString(10.0) + "|" + Number.prototype.toString.length);

print(Boolean() + " " + Boolean(0) + " " + Boolean("") + " " + Boolean("0") + " " + Boolean(new Boolean(false)) + " " + typeof new Boolean(true));
var b = new Boolean(false);
print(b.toString() + " " + b.valueOf() + " " + (b ? "object is true" : "object is false") + " " + Boolean.prototype.valueOf() + " " + Boolean.length);
print(true.toString() + " " + (1 == 1).toString() + " " + (5).valueOf());
//---
(255).toString(36);
//---
(255).toString(1);
//---
(255).toString("16");
//---
(255).toString(16.5);
//---
var o = new String("s");
o.valueOf = Number.prototype.valueOf;
o.valueOf();
//---
var o = new Number(1);
o.toString = Boolean.prototype.toString;
o.toString();

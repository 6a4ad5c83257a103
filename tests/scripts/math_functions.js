// Math: constants, the special values of each function, and the forms of the results.
print(Math.E + " " + Math.LN10 + " " + Math.LN2 + " " + Math.LOG2E + " " + Math.LOG10E);
print(Math.PI + " " + Math.SQRT1_2 + " " + Math.SQRT2 + " " + typeof Math + " " + Math);
Math.PI = 3;
print(Math.PI + " " + delete Math.E + " " + Math.max.length + " " + Math.abs.length + " " + Math.random.length);

function show(x) { return (x == 0 && 1 / x < 0) ? "-0" : "" + x; }
print(show(Math.abs(-5)) + " " + show(Math.abs(-0)) + " " + show(Math.abs(-1 / 0)) + " " + show(Math.abs("x")) + " " + show(Math.abs(0 - 2.5)));
print(show(Math.acos(2)) + " " + show(Math.acos(1)) + " " + show(Math.asin(-0)) + " " + show(Math.asin(1.5)) + " " + show(Math.atan(-0)) + " " + show(Math.atan(1 / 0)));
print(show(Math.atan2(0, -0)) + " " + show(Math.atan2(-0, 1)) + " " + show(Math.atan2(1, 0)) + " " + show(Math.atan2(NaN, 1)));
print(show(Math.ceil(-0.5)) + " " + show(Math.ceil(1.2)) + " " + show(Math.floor(0.5)) + " " + show(Math.floor(-0.5)) + " " + show(Math.floor(-0)));
print(show(Math.cos(0)) + " " + show(Math.cos(1 / 0)) + " " + show(Math.sin(-0)) + " " + show(Math.tan(-0)) + " " + show(Math.exp(-1 / 0)) + " " + show(Math.exp(0)));
print(show(Math.log(0)) + " " + show(Math.log(-1)) + " " + show(Math.log(1)) + " " + show(Math.sqrt(-0)) + " " + show(Math.sqrt(-1)) + " " + show(Math.sqrt(16)));

// max and min take two arguments; zeros of both signs; NaN wins.
print(Math.max(1, 2, 3) + " " + Math.min(3, 2, 1) + " " + Math.max(0 - 1, 0 - 2) + " " + show(Math.max(-0, 0)) + " " + show(Math.min(0, -0)) + " " + Math.max(1, NaN) + " " + Math.max());

// round: halves go up, small negatives give -0.
print(show(Math.round(2.5)) + " " + show(Math.round(-2.5)) + " " + show(Math.round(-0.2)) + " " + show(Math.round(0.2)) + " " + show(Math.round(-0.5)) + " " + Math.round(-0.2) + " " + show(Math.round(1 / 0)));

// pow: NaN, zero, one, infinities and signs.
print(Math.pow(2, 10) + " " + Math.pow(NaN, 0) + " " + Math.pow(1, NaN) + " " + Math.pow(NaN, 1) + " " + Math.pow(1, 1 / 0) + " " + Math.pow(2, -1 / 0) + " " + Math.pow(0.5, -1 / 0));
print(show(Math.pow(-1 / 0, 3)) + " " + show(Math.pow(-1 / 0, 2)) + " " + show(Math.pow(-1 / 0, -3)) + " " + show(Math.pow(-0, 3)) + " " + show(Math.pow(-0, -3)) + " " + show(Math.pow(0, -2)) + " " + show(Math.pow(-8, 1 / 3)));

// random lies in 0..1.
var inside = true;
for (var i = 0; i < 200; i++) { var r = Math.random(); if (!(r >= 0 && r <= 1)) inside = false; }
print(inside);
//---
Math();
//---
new Math.abs(1);

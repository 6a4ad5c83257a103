// Array length rules, join, reverse and sort.
var a = new Array();
print(a.length);
a[4] = "e";
print(a.length);
print(a.join());
a.length = 2;
print(a.length + " " + typeof a[4]);
a.length = 5;
print(a.join("|"));
a["3"] = "d";
print(a.join("|"));
a["03"] = "not an index";
print(a.length + " " + a["03"]);
a[4294967295] = "not an index either";
print(a.length);
print(new Array(3).length);
print(new Array("3").length);
print(new Array(1, 2).length);
print(Array(7).length);
print(new Array(1, 2, 3));
print(new Array(1, 2, 3).toString());
print(delete a.length);
print(delete a[3]);
print(a.join("|"));

var r = new Array(1, 2, 3, 4, 5);
r.reverse();
print(r);
var holes = new Array(3);
holes[0] = "first";
holes.reverse();
print(holes.join("|"));

var s = new Array(5, 1, 10, 3, 25, 2);
s.sort();
print(s);
function numeric(x, y) { return x - y; }
s.sort(numeric);
print(s);
var mixed = new Array(3, void 0, 1);
mixed[5] = 0;
mixed.sort();
print(mixed.join("|") + " " + mixed.length);
var big = new Array();
for (var i = 0; i < 200; i++) big[i] = (i * 7919) % 200;
big.sort(numeric);
var sorted = true;
for (i = 1; i < 200; i++) if (big[i - 1] > big[i]) sorted = false;
print(sorted + " " + big[0] + " " + big[199]);

var like = new Object();
like.length = 3;
like[0] = "x"; like[2] = "z";
like.join = Array.prototype.join;
print(like.join("-"));
print(Object.prototype.toString == Array.prototype.toString);

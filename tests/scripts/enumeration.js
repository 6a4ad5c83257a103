// for-in shows own properties in slot order; deleted slots are reused without losing entries.
var o = new Object();
o.a = 1; o.b = 2; o.c = 3;
var names = "";
for (var k in o) names = names + k + " ";
print(names);
delete o.b;
o.d = 4;
o.e = 5;
names = "";
for (k in o) names = names + k + "=" + o[k] + " ";
print(names);
print(o.a + o.c + o.d + o.e);
for (var i = 0; i < 40; i++) o["p" + i] = i;
for (i = 0; i < 40; i = i + 2) delete o["p" + i];
var sum = 0, count = 0;
for (k in o) { sum = sum + o[k]; count++; }
print(count + " " + sum);
print(o.p39 + " " + typeof o.p38);

function Base() { }
Base.prototype.inherited = 1;
var derived = new Base();
derived.own = 2;
names = "";
for (k in derived) names = names + k + " ";
print(names);
print(derived.inherited);

var a = new Array();
a[2] = "c"; a[0] = "a";
a.extra = "x";
names = "";
for (k in a) names = names + k + " ";
print(names);

var target = new Object();
for (target.last in o) ;
print(target.last);

names = "";
for (k in Object.prototype) names = names + k;
print("[" + names + "]");
print(delete o.a);
print(delete o.missing);
print(delete Object.prototype);

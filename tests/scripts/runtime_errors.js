// Every runtime error text, one program each.
var o = new Object();
o.valueOf = o.toString = null;
print("" + o);
//---
var notAConstructor = print;
new notAConstructor();
//---
var notCallable = new Object();
notCallable();
//---
delete 1;
//---
print(noSuchVariable);
//---
1 = 2;
//---
function f() {
    var o = new Object();
    o.toString = Object.prototype.valueOf;
    o.valueOf = Object.prototype.valueOf;
    return "" + o;
}
f();
//---
var n = null;
n.property = 1;
//---
var five = 5;
new five();
//---
var text = "text";
text();
//---
var fake = new Object();
fake.toString = Function.prototype.toString;
fake.toString();
//---
new Array(2.5);
//---
var a = new Array();
a.length = -1;
//---
new Function("a b", "");
//---
new Function("return )");
//---
eval("(");
//---
function recurse(n) { return recurse(n + 1); }
recurse(0);
//---
var huge = new Array();
huge[4000000000] = 1;
//---
print("" + this);
//---
print("still running after errors");

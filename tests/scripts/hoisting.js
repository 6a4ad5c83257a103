// Declarations take effect at the entry of their context.
print(typeof f);
print(f());
function f() { return "second"; }
print(v);
var v = 1;
print(v);
var v;
print(v);
function f() { return "second" + " again"; }

function g(a, a) { return a; }
print(g(1, 2));

function locals() {
    print(typeof inner);
    print(x);
    var x = "local";
    print(x);
    return x;
}
var x = "global";
locals();
print(x);

function noReturn() { }
print(noReturn());
function Constructed() { this.a = 1; return 1; }
var made = new Constructed;
print(made.a);
function Replaced() { var o = new Object(); o.b = 2; return o; }
print(new Replaced().b);

function setsGlobal() { implicitGlobal = 5; }
setsGlobal();
print(implicitGlobal);

function whoIsThis() { return this == callee; }
var callee = this;
print(whoIsThis());
print(this.whoIsThis());
var holder = new Object();
holder.m = whoIsThis;
print(holder.m());

eval("var fromEval = 7; function evalFunction() { return 8; }");
print(fromEval);
print(evalFunction());
print(eval("1 + 1"));
print(eval(5));
function evalInFunction() {
    eval("var hidden = 3");
    return hidden;
}
print(evalInFunction());
print(typeof hidden);
break;
print("not reached");

// The evaluator: special forms, functions, dynamic scope, errors and *error*.
#include <gtest/gtest.h>

#include "lisp_test_support.h"

namespace lisp::test {
namespace {

TEST(LispEval, SpecialFormsReturnAutoLispValues) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(setq a 1 b (+ a 1))"), L"2");
    EXPECT_EQ(t.run(L"(if nil 1)"), L"nil");
    EXPECT_EQ(t.run(L"(if a \"yes\" \"no\")"), L"\"yes\"");
    EXPECT_EQ(t.run(L"(cond ((= a 2) 'two) (b))"), L"2");
    EXPECT_EQ(t.run(L"(cond (nil 1))"), L"nil");
    EXPECT_EQ(t.run(L"(and 1 2)"), L"T");
    EXPECT_EQ(t.run(L"(and 1 nil (undefined-function))"), L"nil");
    EXPECT_EQ(t.run(L"(or nil 3)"), L"T");
    EXPECT_EQ(t.run(L"(progn 1 2 3)"), L"3");
    EXPECT_EQ(t.run(L"(setq i 0 s 0) (while (< i 4) (setq s (+ s i) i (1+ i)))"), L"4");
    EXPECT_EQ(t.run(L"s"), L"6");
    EXPECT_EQ(t.run(L"(setq n 0) (repeat 5 (setq n (+ n 2)))"), L"10");
    EXPECT_EQ(t.run(L"(quote (a b))"), L"(A B)");
    EXPECT_EQ(t.run(L"(defun sq (x) (* x x))"), L"SQ");
}

TEST(LispEval, ForeachBindsEachElementAndRestoresTheVariable) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(setq e 'outer acc nil) (foreach e '(1 2 3) (setq acc (cons e acc)))"), L"(3 2 1)");
    EXPECT_EQ(t.run(L"e"), L"OUTER");
}

TEST(LispEval, DefunLocalsAreDynamicallyScoped) {
    TestInterp t;
    t.run(L"(setq x 'global) (defun peek () x) (defun f (x / y) (setq y (peek)) y)");
    EXPECT_EQ(t.run(L"(f 'param)"), L"PARAM");
    EXPECT_EQ(t.run(L"x"), L"GLOBAL");
    t.run(L"(defun g (/ x) (setq x 1) (/ 1 0))");
    EXPECT_EQ(t.error(L"(g)"), L"divide by zero");
    EXPECT_EQ(t.run(L"x"), L"GLOBAL");
}

TEST(LispEval, LambdaForms) {
    TestInterp t;
    EXPECT_EQ(t.run(L"((lambda (a b) (- a b)) 5 3)"), L"2");
    EXPECT_EQ(t.run(L"(mapcar '(lambda (x) (* 2 x)) '(1 2 3))"), L"(2 4 6)");
    EXPECT_EQ(t.run(L"(mapcar (function (lambda (x) (1+ x))) '(1 2))"), L"(2 3)");
    EXPECT_EQ(t.run(L"(apply '(lambda (a b) (list b a)) '(1 2))"), L"(2 1)");
    EXPECT_EQ(t.run(L"(type (lambda (x) x))"), L"USUBR");
}

TEST(LispEval, FunctionCallErrors) {
    TestInterp t;
    t.run(L"(defun two (a b) a)");
    EXPECT_EQ(t.error(L"(two 1)"), L"too few arguments");
    EXPECT_EQ(t.error(L"(two 1 2 3)"), L"too many arguments");
    EXPECT_EQ(t.error(L"(car)"), L"too few arguments");
    EXPECT_EQ(t.error(L"(car '(1) '(2))"), L"too many arguments");
    EXPECT_EQ(t.error(L"(nosuchfn 1)"), L"no function definition: NOSUCHFN");
    EXPECT_EQ(t.error(L"(setq v 1) (v)"), L"bad function: 1");
    EXPECT_EQ(t.error(L"(setq 1 2)"), L"bad argument type: symbolp 1");
    EXPECT_EQ(t.error(L"(setq a)"), L"too few arguments");
    EXPECT_EQ(t.error(L"(if)"), L"too few arguments");
    EXPECT_EQ(t.error(L"(repeat 2.0 1)"), L"bad argument type: fixnump: 2.0");
}

TEST(LispEval, RunawayRecursionIsAnErrorNotACrash) {
    TestInterp t;
    t.run(L"(defun down (n) (if (> n 0) (+ 1 (down (1- n))) 0))");
    EXPECT_EQ(t.run(L"(down 500)"), L"500");
    EXPECT_EQ(t.error(L"(defun forever (n) (forever n)) (forever 1)"), L"internal stack limit reached");
    EXPECT_EQ(t.run(L"(down 10)"), L"10");
}

TEST(LispEval, LongListsAreBuiltAndFreedWithoutRecursion) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(setq l nil i 0) (repeat 200000 (setq l (cons i l) i (1+ i))) (length l)"), L"200000");
    EXPECT_EQ(t.run(L"(setq l nil)"), L"nil");
}

TEST(LispEval, EvalSetAndBoundp) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(set 'q 5) q"), L"5");
    EXPECT_EQ(t.run(L"(eval '(+ q 1))"), L"6");
    EXPECT_EQ(t.run(L"(boundp 'q)"), L"T");
    EXPECT_EQ(t.run(L"(setq q nil) (boundp 'q)"), L"nil");
    EXPECT_EQ(t.run(L"(type 'q)"), L"SYM");
    EXPECT_EQ(t.run(L"(list (type 1) (type 1.0) (type \"\") (type '(1)) (type car) (type nil))"),
              L"(INT REAL STR LIST SUBR nil)");
}

TEST(LispEval, CatchAllApplyTurnsErrorsIntoValues) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(setq r (vl-catch-all-apply '/ '(1 0))) (vl-catch-all-error-p r)"), L"T");
    EXPECT_EQ(t.run(L"(vl-catch-all-error-message r)"), L"\"divide by zero\"");
    EXPECT_EQ(t.run(L"(vl-catch-all-apply '+ '(1 2))"), L"3");
    EXPECT_EQ(t.run(L"(vl-catch-all-error-p 3)"), L"nil");
    EXPECT_EQ(t.run(L"(vl-catch-all-error-message (vl-catch-all-apply 'exit nil))"), L"\"quit / exit abort\"");
    EXPECT_EQ(t.error(L"(vl-catch-all-error-message 1)"), L"bad argument type: vl-catch-all-apply-error-p 1");
}

TEST(LispEval, ErrorHandlerReceivesTheMessage) {
    TestInterp t;
    Error err(L"divide by zero");
    EXPECT_FALSE(t.interp().runErrorHandler(err));
    t.run(L"(defun *error* (msg) (princ (strcat \"caught: \" msg)))");
    EXPECT_TRUE(t.interp().runErrorHandler(err));
    EXPECT_EQ(t.takeOutput(), L"caught: divide by zero");
    EXPECT_EQ(t.error(L"(exit)"), L"quit / exit abort");
    EXPECT_EQ(t.error(L"(quit)"), L"quit / exit abort");
}

TEST(LispEval, HostDefinedFunctions) {
    TestInterp t;
    int calls = 0;
    t.interp().defineSubr(L"kv_count", [&calls](Interp&, std::vector<Value>& args) {
        ++calls;
        return Value::integer(static_cast<std::int32_t>(args.size()));
    }, true);
    EXPECT_EQ(t.run(L"(kv_count 1 (+ 1 1) 3)"), L"3");
    EXPECT_EQ(t.run(L"(type kv_count)"), L"EXRXSUBR");
    EXPECT_EQ(calls, 1);
    t.interp().setGlobal(L"KV_COUNT", Value());
    EXPECT_EQ(t.error(L"(kv_count)"), L"no function definition: KV_COUNT");
    EXPECT_EQ(Interp::prin1String(t.interp().apply(Value::symbol(L"+"), {Value::integer(2), Value::integer(3)})), L"5");
}

TEST(LispEval, InterpretersKeepSeparateGlobals) {
    TestInterp a, b;
    a.run(L"(setq shared 1) (defun only-a () 'a)");
    EXPECT_EQ(b.run(L"shared"), L"nil");
    EXPECT_EQ(b.error(L"(only-a)"), L"no function definition: ONLY-A");
    EXPECT_EQ(a.run(L"(only-a)"), L"A");
}

TEST(LispEval, DefunQKeepsTheDefinitionAsAList) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(defun-q dq (x / y) (setq y 2) (* x y))"), L"DQ");
    EXPECT_EQ(t.run(L"(list (dq 5) (type dq) (defun-q-list-ref 'dq))"), L"(10 LIST ((X / Y) (SETQ Y 2) (* X Y)))");
    EXPECT_EQ(t.run(L"y"), L"nil");
    // The usual way to extend a startup function: append to its list and set it back.
    EXPECT_EQ(t.run(L"(setq log nil) (defun-q start () (setq log (cons 1 log)))"
                    L"(defun-q-list-set 'start (append (defun-q-list-ref 'start) '((setq log (cons 2 log)))))"
                    L"(start) log"),
              L"(2 1)");
    EXPECT_EQ(t.run(L"(defun-q-list-set 'plus '((a b) (+ a b)))"), L"PLUS");
    EXPECT_EQ(t.run(L"(plus 3 4)"), L"7");
    EXPECT_EQ(t.run(L"(defun plain () 1) (defun-q-list-ref 'plain)"), L"nil");
    EXPECT_EQ(t.error(L"(defun-q bad (1) 1)"), L"bad argument type: symbolp 1");
    EXPECT_EQ(t.error(L"(defun-q-list-set 'x 5)"), L"bad argument type: listp 5");
    EXPECT_EQ(t.error(L"(defun-q-list-ref \"x\")"), L"bad argument type: symbolp \"x\"");
}

TEST(LispEval, SetqWithoutPairsIsNil) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(setq)"), L"nil");
    EXPECT_EQ(t.error(L"(setq a)"), L"too few arguments");
}

TEST(LispEval, AtomsFamilyListsTheSymbolsThatHaveValues) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(atoms-family 1 '(\"car\" \"NO-SUCH-NAME\" \"PI\"))"), L"(\"CAR\" nil \"PI\")");
    EXPECT_EQ(t.run(L"(atoms-family 0 '(\"car\" \"NO-SUCH-NAME\"))"), L"(CAR nil)");
    EXPECT_EQ(t.run(L"(and (vl-position 'CAR (atoms-family 0)) (vl-position \"CAR\" (atoms-family 1)))"), L"T");
    EXPECT_EQ(t.run(L"(list (vl-position \"AF-NEW\" (atoms-family 1)) (setq af-new 1)"
                    L"(numberp (vl-position \"AF-NEW\" (atoms-family 1))))"),
              L"(nil 1 T)");
    EXPECT_EQ(t.run(L"(setq af-new nil) (vl-position \"AF-NEW\" (atoms-family 1))"), L"nil");
    EXPECT_EQ(t.run(L"(setq names (atoms-family 1)) (equal names (vl-sort names '<))"), L"T");
    EXPECT_EQ(t.error(L"(atoms-family 2)"), L"bad argument value: 2");
    EXPECT_EQ(t.error(L"(atoms-family 1 '(car))"), L"bad argument type: stringp CAR");
}

TEST(LispEval, VerNamesTheInterpreter) {
    TestInterp t;
    EXPECT_EQ(t.run(L"(ver)"), L"\"Kelvo LISP 1.0 (en)\"");
    EXPECT_EQ(t.error(L"(ver 1)"), L"too many arguments");
}

}  // namespace
}  // namespace lisp::test

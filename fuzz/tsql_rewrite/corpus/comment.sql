select 1 /* a /* b */ c */ -- rest
 from t